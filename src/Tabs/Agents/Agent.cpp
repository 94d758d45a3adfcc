#include "Tabs/Agents/Agent.h"

#include "Core/TerminalApp.h"
#include "Core/Texts.h"
#include "Platform/Files.h"
#include "Platform/ToolRunner.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kListingLimit{15};
constexpr qint64 kMaximumStateFile = 1048576;

/// Reads the keys of one object; `ok` turns false at the first value of the wrong type. Null counts as absent.
class Keys {
public:
    explicit Keys(const QJsonObject &object)
        : m_object(object)
    {
    }

    bool ok = true;

    std::optional<QString> text(QLatin1StringView key)
    {
        const QJsonValue value = m_object.value(key);
        return present(value, value.isString()) ? std::optional(value.toString()) : std::nullopt;
    }
    std::optional<double> number(QLatin1StringView key)
    {
        const QJsonValue value = m_object.value(key);
        return present(value, value.isDouble()) ? std::optional(value.toDouble()) : std::nullopt;
    }
    std::optional<qint64> integer(QLatin1StringView key)
    {
        const QJsonValue value = m_object.value(key);
        // toInteger() returns its fallback for anything but a whole number.
        const bool whole = value.toInteger(0) == value.toInteger(1);
        return present(value, whole) ? std::optional(value.toInteger()) : std::nullopt;
    }

private:
    bool present(const QJsonValue &value, bool fits)
    {
        if (value.isUndefined() || value.isNull())
            return false;
        ok = ok && fits;
        return fits;
    }

    const QJsonObject &m_object;
};

/// A session in a terminal has no state of its own, only the status of its process.
QString stateOf(const std::optional<QString> &status)
{
    if (status == u"busy"_s)
        return u"working"_s;
    return status == u"waiting"_s ? u"blocked"_s : u"idle"_s;
}

std::optional<Agent> parseAgent(const QJsonObject &object)
{
    Keys keys(object);
    const auto id = keys.text("id"_L1);
    const auto pid = keys.integer("pid"_L1);
    const auto state = keys.text("state"_L1);
    const auto status = keys.text("status"_L1);
    const auto startedAt = keys.number("startedAt"_L1);

    Agent agent;
    agent.sessionId = keys.text("sessionId"_L1);
    agent.name = keys.text("name"_L1);
    agent.cwd = keys.text("cwd"_L1);
    agent.kind = keys.text("kind"_L1);
    if (!keys.ok || !startedAt || !(id || agent.sessionId || pid))
        return std::nullopt;
    agent.id = id ? *id : agent.sessionId ? *agent.sessionId : QString::number(*pid);
    agent.state = state ? *state : stateOf(status);
    agent.startedAt = *startedAt;
    return agent;
}

/// What Claude Code stores about a background session, cut to one line.
std::optional<QString> loadDetail(const Files &files, const QString &jobs, const QString &id)
{
    // The id comes from outside: as a file name it must not lead out of the folder.
    if (id.isEmpty() || id == "."_L1 || id == ".."_L1 || id.contains(u'/') || id.contains(QChar(u'\0')))
        return std::nullopt;
    const auto read = files.read(jobs + id + "/state.json"_L1, kMaximumStateFile);
    const auto *bytes = std::get_if<QByteArray>(&read);
    if (!bytes)
        return std::nullopt;
    const QJsonValue detail = QJsonDocument::fromJson(*bytes).object().value("detail"_L1);
    return detail.isString() ? std::optional(detail.toString()) : std::nullopt;
}

} // namespace

QString Agent::title() const
{
    if (name && !name->isEmpty())
        return *name;
    return cwd && !cwd->isEmpty() ? lastPathComponent(*cwd) : id;
}

bool Agent::canResume() const
{
    return sessionId && isSessionId(*sessionId);
}

std::optional<QList<Agent>> parseAgents(QByteArrayView listing)
{
    const auto document = QJsonDocument::fromJson(QByteArray::fromRawData(listing.data(), listing.size()));
    if (!document.isArray())
        return std::nullopt;
    const QJsonArray array = document.array();
    QList<Agent> agents;
    agents.reserve(array.size());
    for (const auto element : array) {
        auto agent = element.isObject() ? parseAgent(element.toObject()) : std::nullopt;
        if (!agent)
            return std::nullopt;
        agents.append(std::move(*agent));
    }
    return agents;
}

std::optional<QList<Agent>> loadAgents(ToolRunner &tools, const Files &files, const QString &home)
{
    const RunResult result = tools.run({u"claude"_s, u"agents"_s, u"--json"_s}, {}, kListingLimit);
    if (!result.ok)
        return std::nullopt;
    auto agents = parseAgents(result.out);
    if (!agents)
        return std::nullopt;
    agents->removeIf([](const Agent &agent) { return agent.state == "done"_L1 || agent.state == "idle"_L1; });
    const QString jobs = home + "/.claude/jobs/"_L1;
    for (Agent &agent : *agents)
        agent.detail = loadDetail(files, jobs, agent.id);
    std::ranges::stable_sort(*agents, [](const Agent &a, const Agent &b) {
        return a.isWorking() != b.isWorking() ? a.isWorking() : a.startedAt > b.startedAt;
    });
    return agents;
}

} // namespace velto
