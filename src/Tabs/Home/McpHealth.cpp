#include "Tabs/Home/McpHealth.h"

#include "Core/Process.h"
#include "Platform/ToolRunner.h"

#include <QCoreApplication>
#include <chrono>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLimit{60};
constexpr QChar kHeavyCheckMark(0x2714);

std::optional<MCPServer> parseLine(const QString &line)
{
    const qsizetype colon = line.indexOf(": "_L1);
    const qsizetype dash = colon < 0 ? -1 : line.indexOf(" - "_L1, colon + 2);
    if (dash < 0)
        return std::nullopt;
    const QStringView status = QStringView(line).sliced(dash + 3);
    const bool auth = status.contains("auth"_L1, Qt::CaseInsensitive);
    return MCPServer{line.first(colon),
                     status.contains(kHeavyCheckMark) ? u"ok"_s
                         : auth                       ? u"auth"_s
                                                      : u"failed"_s,
                     line.sliced(colon + 2, dash - colon - 2)};
}

} // namespace

QList<MCPServer> parseMcpList(const QByteArray &output)
{
    QList<MCPServer> servers;
    for (const QString &line : QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts)) {
        if (const auto server = parseLine(line))
            servers.append(*server);
    }
    return servers;
}

McpHealth mcpHealth(ToolRunner &tools)
{
    const RunResult result = tools.run({u"claude"_s, u"mcp"_s, u"list"_s}, {}, kLimit);
    const QList<MCPServer> servers = parseMcpList(result.out);
    if (!servers.isEmpty() || result.ok)
        return {servers, std::nullopt};
    const QString last = lastLine(result.err);
    const QString why = last.isEmpty() ? QCoreApplication::translate("velto::McpHealth", "no output") : last;
    return {{}, QCoreApplication::translate("velto::McpHealth", "Couldn't check MCP servers (claude mcp list: %1).").arg(why)};
}

} // namespace velto
