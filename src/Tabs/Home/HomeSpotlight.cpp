#include "Tabs/Home/HomeSpotlight.h"

#include "Core/TerminalApp.h"
#include "Core/Texts.h"
#include "Tabs/Agents/AgentRows.h"

using namespace Qt::StringLiterals;

namespace velto {

HomeSpotlight::HomeSpotlight(const TerminalApp &terminal, QObject *parent)
    : QObject(parent)
    , m_terminal(terminal)
{
}

void HomeSpotlight::set(const std::optional<Agent> &agent, const QDateTime &now)
{
    const QString age = agent ? ago(startOf(*agent), now) : QString();
    if (agent == m_agent && age == m_age)
        return;
    m_agent = agent;
    m_age = age;
    m_spokenAge = agent ? timeAgo(startOf(*agent), now) : QString();
    Q_EMIT changed();
}

QString HomeSpotlight::stateText() const
{
    return working() ? tr("Thinking…") : tr("Waiting for you");
}

QString HomeSpotlight::spoken() const
{
    QStringList parts{title(), stateText(), detail(), m_spokenAge};
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

void HomeSpotlight::resume() const
{
    if (canResume())
        m_terminal.resumeClaude(m_agent->sessionId, m_agent->cwd);
}

QString HomeSpotlight::terminalName() const
{
    return TerminalApp::name(m_terminal.current());
}

} // namespace velto
