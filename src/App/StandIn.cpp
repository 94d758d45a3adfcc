#include "App/StandIn.h"

#include "Hooks/Hooks.h"
#include "Hub/Hub.h"
#include "Platform/Background.h"
#include "Platform/Places.h"
#include "Platform/ToolRunner.h"
#include "Tabs/Agents/AgentsSource.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Longer than curl's own limit.
constexpr std::chrono::seconds kLimit{37};

/// What Claude Code passes to its hook, without the id of a session: an Allow here would do no harm.
QByteArray body(const QString &home)
{
    const QJsonObject input{{u"command"_s, u"git fetch --prune\ngit log --oneline --graph main..origin/main\nmake test"_s},
                            {u"description"_s, u"See what is new, then run the tests"_s}};
    const QJsonObject event{{u"hook_event_name"_s, u"PermissionRequest"_s},
                            {u"cwd"_s, home + u"/stand-in"_s},
                            {u"tool_name"_s, u"Bash"_s},
                            {u"tool_input"_s, input}};
    return QJsonDocument(event).toJson(QJsonDocument::Compact);
}

} // namespace

StandIn::StandIn(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
}

void StandIn::ask()
{
    if (m_asking)
        return;
    m_asking = true;
    m_needs.agents.expectTrial();
    const QString asked = QString::fromUtf8(body(m_needs.places.home)).replace(u'\'', u"'\\''"_s);
    const QString command = u"printf %s '"_s + asked + u"' | "_s + permissionCommand(hookToken(m_needs.defaults));
    inBackground(
        m_needs.background, this,
        [&tools = m_needs.tools, command] {
            return tools.run({u"sh"_s, u"-c"_s, command}, {}, kLimit).out;
        },
        [this](const QByteArray &answer) { hear(answer); });
}

void StandIn::hear(const QByteArray &answer)
{
    m_asking = false;
    const QString behavior = QJsonDocument::fromJson(answer)
                                 .object()
                                 .value("hookSpecificOutput"_L1)
                                 .toObject()
                                 .value("decision"_L1)
                                 .toObject()
                                 .value("behavior"_L1)
                                 .toString();
    Peek peek;
    peek.tab = Tab::Agents;
    if (behavior == "allow"_L1) {
        peek.symbol = u"checkmark.circle.fill"_s;
        peek.text = tr("The session was told: allowed");
        peek.tone = Peek::Tone::Good;
    } else if (behavior == "deny"_L1) {
        peek.symbol = u"hand.raised.fill"_s;
        peek.text = tr("The session was told: denied");
        peek.tone = Peek::Tone::Warn;
    } else {
        peek.symbol = u"info.circle"_s;
        peek.text = tr("No answer: the session would ask in its terminal");
    }
    m_needs.hub.show(std::move(peek));
    Q_EMIT told(answer);
}

} // namespace velto
