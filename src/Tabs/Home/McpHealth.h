#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace velto {

class ToolRunner;

/// One MCP server that Claude Code is set up with.
struct MCPServer {
    QString name;
    QString status; ///< "ok", "auth" or "failed"
    QString detail; ///< its command or address

    bool operator==(const MCPServer &) const = default;
};

struct McpHealth {
    QList<MCPServer> servers;
    std::optional<QString> error; ///< why nothing could be found out, for the user
};

/// The servers in what `claude mcp list` printed (https://docs.claude.com/en/docs/claude-code/mcp): one a line, as
/// "name: detail - status text". Any thread.
QList<MCPServer> parseMcpList(const QByteArray &output);
/// Asks Claude Code, which tries every server. Blocks for up to a minute; never on the UI thread.
McpHealth mcpHealth(ToolRunner &tools);

} // namespace velto
