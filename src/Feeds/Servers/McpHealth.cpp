#include "Feeds/Servers/McpHealth.h"

#include "Platform/ToolRunner.h"

#include <QCoreApplication>
#include <QStringList>
#include <chrono>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLimit{60};
constexpr auto kAfterName = ": "_L1;
constexpr auto kAfterDetail = " - "_L1;
constexpr QChar kCheckMark(0x2714);

QString statusOf(QStringView text)
{
    if (text.contains(kCheckMark))
        return u"ok"_s;
    return text.contains("auth"_L1, Qt::CaseInsensitive) ? u"auth"_s : u"failed"_s;
}

std::optional<MCPServer> parseServer(QStringView line)
{
    const qsizetype nameEnd = line.indexOf(kAfterName);
    if (nameEnd < 0)
        return std::nullopt;
    const QStringView rest = line.sliced(nameEnd + kAfterName.size());
    const qsizetype detailEnd = rest.indexOf(kAfterDetail);
    if (detailEnd < 0)
        return std::nullopt;
    return MCPServer{line.first(nameEnd).toString(), statusOf(rest.sliced(detailEnd + kAfterDetail.size())),
                     rest.first(detailEnd).toString()};
}

} // namespace

QList<MCPServer> parseServers(QByteArrayView listing)
{
    const QString text = QString::fromUtf8(listing);
    QList<MCPServer> servers;
    for (const QStringView line : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        if (auto server = parseServer(line))
            servers.append(*std::move(server));
    }
    return servers;
}

MCPHealth mcpHealth(ToolRunner &tools)
{
    const RunResult result = tools.run({u"claude"_s, u"mcp"_s, u"list"_s}, {}, kLimit);
    const auto servers = parseServers(result.out);
    if (!servers.isEmpty() || result.ok)
        return {servers, std::nullopt};
    const QStringList lines = result.err.split(u'\n', Qt::SkipEmptyParts);
    const QString why = lines.isEmpty() ? QCoreApplication::translate("MCPHealth", "no output") : lines.last();
    return {{}, QCoreApplication::translate("MCPHealth", "Couldn't check MCP servers (claude mcp list: %1).").arg(why)};
}

} // namespace velto
