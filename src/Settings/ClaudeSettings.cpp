#include "Settings/ClaudeSettings.h"

#include "Platform/Places.h"
#include "Platform/ToolRunner.h"
#include "Tabs/Agents/AgentsSource.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

ClaudeSettings::ClaudeSettings(AgentsSource &agents, const ToolRunner &tools, const Places &places, int port, QObject *parent)
    : QObject(parent)
    , m_agents(agents)
    , m_tools(tools)
    , m_places(places)
    , m_port(port)
{
    connect(&m_agents, &AgentsSource::changed, this, &ClaudeSettings::changed);
}

QString ClaudeSettings::installedText() const
{
    return m_tools.toolInstalled(u"claude"_s) ? tr("Yes") : tr("No — agent features stay off until it is");
}

QString ClaudeSettings::stateText() const
{
    if (m_agents.hooksInstalled())
        return m_agents.heard() ? tr("Connected") : tr("Connected, but not heard");
    return m_agents.needsUpgrade() ? tr("Needs reconnecting (older version)") : tr("Not connected");
}

bool ClaudeSettings::connected() const
{
    return m_agents.hooksInstalled();
}

bool ClaudeSettings::canConnect() const
{
    return QFileInfo(m_places.home + "/.claude"_L1).isDir();
}

QString ClaudeSettings::noteText() const
{
    return tr("Connecting adds two hooks to ~/.claude/settings.json (a backup is saved next to it). When an agent finishes or "
              "needs you, Claude Code tells Velto on this Mac at 127.0.0.1:%1, with a secret only Velto knows. Nothing leaves "
              "your Mac.")
        .arg(m_port);
}

QString ClaudeSettings::errorText() const
{
    const QString error = m_agents.hookErrorText();
    return error.isEmpty() ? m_agents.hearing().message() : error;
}

bool ClaudeSettings::heard() const
{
    return m_agents.heard();
}

void ClaudeSettings::tryAgain()
{
    m_agents.tryHearing();
}

void ClaudeSettings::prepare()
{
    m_agents.prepareHooks();
}

QString ClaudeSettings::preview() const
{
    return m_agents.preview();
}

void ClaudeSettings::connectHooks()
{
    m_agents.installHooks();
}

void ClaudeSettings::disconnectHooks()
{
    m_agents.removeHooks();
}

} // namespace velto
