#include "Settings/Welcome.h"

#include "Platform/Background.h"
#include "Platform/HotKey.h"
#include "Platform/LoginItem.h"
#include "Platform/Places.h"
#include "Platform/ToolRunner.h"
#include "Settings/GeneralSettings.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Agents/ToolProcess.h"

#include <QFileInfo>
#include <QMetaEnum>

using namespace Qt::StringLiterals;

namespace velto {

Welcome::Welcome(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_claude(needs.tools.toolInstalled(u"claude"_s))
    , m_gh(needs.tools.toolInstalled(u"gh"_s))
    , m_hooks(QFileInfo(needs.places.home + "/.claude"_L1).isDir())
    , m_modules({"module"_ba, "label"_ba, "note"_ba, "on"_ba})
{
    connect(&m_needs.prefs, &Prefs::changed, this, &Welcome::update);
    connect(&m_needs.hotKey, &HotKey::changed, this, &Welcome::changed);
    update();
}

QString Welcome::keyHint() const
{
    const Support support = m_needs.hotKey.support();
    const QString keys = m_needs.hotKey.keys();
    if (!support.works())
        return support.reason.isEmpty() ? tr("⌃⌥N is used by another app — open Velto from the menu bar icon") : support.reason;
    return keys.isEmpty() ? tr("Or press ⌃⌥N from anywhere") : tr("Or press %1 from anywhere").arg(keys);
}

QVariantList Welcome::modes()
{
    return GeneralSettings::modes();
}

int Welcome::mode() const
{
    return int(m_needs.prefs.mode());
}

void Welcome::setMode(int mode)
{
    if (mode != this->mode())
        m_needs.prefs.selectMode(Prefs::Mode(mode));
}

QString Welcome::modeLine() const
{
    return GeneralSettings::lineFor(m_needs.prefs.mode());
}

void Welcome::update()
{
    const QMetaEnum modules = QMetaEnum::fromType<Prefs::Module>();
    QList<RowModel::Row> rows;
    for (int i = 0; i < modules.keyCount(); ++i) {
        const auto module = Prefs::Module(modules.value(i));
        rows.append({Prefs::rawValue(module), Prefs::label(module), note(module), m_needs.prefs.isOn(module)});
    }
    m_modules.setRows(rows);
    Q_EMIT changed();
}

QString Welcome::note(Prefs::Module module) const
{
    switch (module) {
    case Prefs::Module::Agents:
    case Prefs::Module::Usage:
    case Prefs::Module::Mcp:
        return m_claude ? QString() : tr("needs Claude Code");
    case Prefs::Module::Prs:
        return m_gh ? QString() : tr("needs the GitHub CLI");
    case Prefs::Module::Work:
        return tr("connect in Settings");
    case Prefs::Module::Repos:
        return m_needs.prefs.repoRoots().isEmpty() ? tr("choose folders in Settings") : QString();
    default:
        return {};
    }
}

void Welcome::set(const QString &module, bool on)
{
    const QMetaEnum modules = QMetaEnum::fromType<Prefs::Module>();
    for (int i = 0; i < modules.keyCount(); ++i) {
        const auto each = Prefs::Module(modules.value(i));
        if (Prefs::rawValue(each) == module && m_needs.prefs.isOn(each) != on)
            m_needs.prefs.set(each, on);
    }
}

QString Welcome::preview() const
{
    return m_needs.agents.preview();
}

void Welcome::detect()
{
    if (m_needs.prefs.onboarded())
        return;
    if (m_claude) {
        detected(true);
        return;
    }
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools] { return !scanTools(tools).isEmpty(); },
        [this](bool otherTools) { detected(otherTools); });
}

void Welcome::detected(bool otherTools)
{
    QList<Prefs::Module> missing;
    if (!m_claude)
        missing += {Prefs::Module::Usage, Prefs::Module::Mcp};
    if (!m_claude && !otherTools)
        missing += Prefs::Module::Agents;
    if (m_needs.prefs.repoRoots().isEmpty())
        missing += Prefs::Module::Repos;
    if (!m_gh)
        missing += Prefs::Module::Prs;
    // The preset, less what can't work here; switching modules off one by one would drop the preset.
    if (!missing.isEmpty() || m_needs.prefs.mode() == Prefs::Mode::Custom)
        m_needs.prefs.selectMode(Prefs::Mode::Engineer, missing);
}

void Welcome::finish()
{
    AgentsSource &agents = m_needs.agents;
    if (m_claude && m_hooks && !agents.hooksInstalled())
        agents.installHooks();
    m_needs.loginItem.set(m_login);
    Q_EMIT done();
}

} // namespace velto
