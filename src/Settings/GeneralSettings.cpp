#include "Settings/GeneralSettings.h"

#include "Core/TerminalApp.h"
#include "Hub/Hub.h"
#include "Platform/HotKey.h"
#include "Platform/LoginItem.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::array kModes{Prefs::Mode::Engineer, Prefs::Mode::Ai, Prefs::Mode::Sales, Prefs::Mode::All, Prefs::Mode::Custom};
constexpr std::array kTerminals{TerminalApp::App::Terminal, TerminalApp::App::ITerm, TerminalApp::App::Ghostty,
                                TerminalApp::App::Warp};

QVariantMap option(const QString &text, int value)
{
    return {{u"text"_s, text}, {u"value"_s, value}};
}

} // namespace

GeneralSettings::GeneralSettings(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_login(needs.loginItem.enabled())
{
    connect(&m_needs.prefs, &Prefs::changed, this, &GeneralSettings::changed);
    connect(&m_needs.hotKey, &HotKey::changed, this, &GeneralSettings::changed);
}

QVariantList GeneralSettings::modes()
{
    QVariantList options;
    for (const Prefs::Mode mode : kModes)
        options.append(option(Prefs::title(mode), int(mode)));
    return options;
}

QVariantList GeneralSettings::openModes()
{
    return {option(tr("Hover to peek, click to open"), int(Prefs::OpenMode::Hover)),
            option(tr("Click only"), int(Prefs::OpenMode::Click))};
}

QVariantList GeneralSettings::terminals() const
{
    QVariantList options;
    for (const TerminalApp::App app : kTerminals) {
        if (m_needs.terminal.installed(app))
            options.append(option(TerminalApp::name(app), int(app)));
    }
    return options;
}

int GeneralSettings::mode() const
{
    return int(m_needs.prefs.mode());
}

void GeneralSettings::setMode(int mode)
{
    if (mode == this->mode())
        return;
    m_needs.prefs.selectMode(Prefs::Mode(mode));
    m_needs.hub.refresh(true);
}

QString GeneralSettings::lineFor(Prefs::Mode mode)
{
    switch (mode) {
    case Prefs::Mode::Engineer:
        return tr("Code, pull requests, repos and agents");
    case Prefs::Mode::Ai:
        return tr("Agents, MCP, usage and focus");
    case Prefs::Mode::Sales:
        return tr("Outreach, meetings, CRM and follow-ups");
    case Prefs::Mode::All:
        return tr("Every available glance");
    case Prefs::Mode::Custom:
        break;
    }
    return tr("Your own mix");
}

int GeneralSettings::openMode() const
{
    return int(m_needs.prefs.openMode());
}

void GeneralSettings::setOpenMode(int mode)
{
    m_needs.prefs.setOpenMode(Prefs::OpenMode(mode));
}

QString GeneralSettings::shortcutText() const
{
    const Support support = m_needs.hotKey.support();
    const QString keys = m_needs.hotKey.keys();
    if (support.works())
        return keys.isEmpty() ? tr("⌃⌥N opens Velto from anywhere") : tr("%1 opens Velto from anywhere").arg(keys);
    return support.reason.isEmpty() ? tr("⌃⌥N is used by another app — open Velto from the menu bar icon") : support.reason;
}

bool GeneralSettings::shortcutDeclined() const
{
    return m_needs.hotKey.canAskAgain();
}

void GeneralSettings::askForShortcut()
{
    m_needs.hotKey.askAgain();
}

bool GeneralSettings::quietWhileRecording() const
{
    return m_needs.prefs.quietWhileRecording();
}

void GeneralSettings::setQuietWhileRecording(bool on)
{
    m_needs.prefs.setQuietWhileRecording(on);
}

QString GeneralSettings::loginProblem() const
{
    return m_needs.loginItem.problem();
}

void GeneralSettings::setLogin(bool on)
{
    m_login = m_needs.loginItem.set(on);
    Q_EMIT changed(); // also if it failed: the switch that was pressed has to go back
}

int GeneralSettings::terminal() const
{
    return int(m_needs.terminal.current());
}

void GeneralSettings::setTerminal(int terminal)
{
    if (terminal == this->terminal())
        return;
    m_needs.terminal.setCurrent(TerminalApp::App(terminal));
    Q_EMIT changed();
}

bool GeneralSettings::peekOnFinish() const
{
    return m_needs.prefs.peekOnFinish();
}

void GeneralSettings::setPeekOnFinish(bool on)
{
    m_needs.prefs.setPeekOnFinish(on);
}

QString GeneralSettings::dailyBudget() const
{
    return QString::number(m_needs.prefs.dailyBudget());
}

void GeneralSettings::setDailyBudget(const QString &text)
{
    bool ok = false;
    const qint64 tokens = text.trimmed().isEmpty() ? 0 : text.trimmed().toLongLong(&ok);
    if ((ok || text.trimmed().isEmpty()) && tokens >= 0)
        m_needs.prefs.setDailyBudget(tokens);
}

QString GeneralSettings::dailyPriority() const
{
    return m_needs.prefs.dailyPriority();
}

void GeneralSettings::setDailyPriority(const QString &text)
{
    m_needs.prefs.setDailyPriority(text);
}

void GeneralSettings::reread()
{
    m_login = m_needs.loginItem.enabled();
    Q_EMIT changed();
}

} // namespace velto
