#include "Settings/AboutSettings.h"

#include "Hooks/HookInstaller.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/Defaults.h"
#include "Platform/Keychain.h"
#include "Platform/LoginItem.h"

#include <QPointer>
#include <chrono>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLongest{2};
const auto kToken = u"Velto.quillbox"_s;

} // namespace

AboutSettings::AboutSettings(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
}

QString AboutSettings::version() const
{
    return m_needs.version.isEmpty() ? u"dev"_s : m_needs.version;
}

void AboutSettings::reset()
{
    if (m_limit)
        return;
    // What can't be removed doesn't stop the rest.
    m_left.clear();
    if (const auto problem = m_needs.installer.uninstall())
        m_left += tr("The Claude Code hooks: %1").arg(*problem);
    m_needs.loginItem.set(false);
    if (const QString problem = m_needs.loginItem.problem(); !problem.isEmpty())
        m_left += tr("The login item: %1").arg(problem);
    m_token = Token::Unknown;
    m_settings.reset();
    // A keyring or a disk that hangs doesn't hold it up.
    m_limit = m_needs.clock.after(kLongest, [this] { finish(); });
    inBackground(
        m_needs.background, this,
        [&keychain = m_needs.keychain] { return keychain.put(kToken, std::nullopt) || !keychain.get(kToken); },
        [this](bool gone) {
            m_token = gone && !m_needs.keychain.locked() ? Token::Gone : Token::Stays;
            settle();
        });
    m_needs.defaults.clear([alive = QPointer(this)](const QString &problem) {
        if (!alive)
            return;
        alive->m_settings = problem;
        alive->settle();
    });
}

void AboutSettings::settle()
{
    if (m_limit && m_token != Token::Unknown && m_settings)
        finish();
}

void AboutSettings::finish()
{
    m_limit.reset();
    if (m_token == Token::Unknown)
        m_left += tr("Quillbox's token: the keyring hasn't answered yet.");
    else if (m_token == Token::Stays)
        m_left += m_needs.keychain.locked() ? tr("Quillbox's token: the keyring is locked.")
                                            : tr("Quillbox's token: the keyring couldn't erase it.");
    if (!m_settings)
        m_left += tr("The settings: the disk doesn't answer.");
    else if (!m_settings->isEmpty())
        m_left += tr("The settings: %1").arg(*m_settings);
    if (m_left.isEmpty())
        quit();
    else
        Q_EMIT leftChanged();
}

void AboutSettings::quit()
{
    Q_EMIT quitWanted();
}

} // namespace velto
