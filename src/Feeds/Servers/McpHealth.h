#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <optional>

namespace velto {

class ToolRunner;

/// One MCP server of Claude Code's, as `claude mcp list` reports it (https://docs.claude.com/en/docs/claude-code/mcp).
struct MCPServer {
    QString name;
    QString status; ///< "ok", "auth" (the user must sign in) or "failed"
    QString detail; ///< its command or address

    bool isFailing() const { return status == QLatin1String("failed"); }
    bool needsAuth() const { return status == QLatin1String("auth"); }
    bool operator==(const MCPServer &) const = default;
};

struct MCPHealth {
    QList<MCPServer> servers;
    std::optional<QString> error; ///< why nothing is known, in one sentence
};

/// The servers of a listing as it was printed: lines of "name: detail - status text". Other lines are skipped. Any thread.
QList<MCPServer> parseServers(QByteArrayView listing);

/// Asks Claude Code which servers are configured and whether they connect, which it tests on the spot: half a minute if one of
/// them hangs. Blocks for up to 62 seconds; never on the UI thread.
MCPHealth mcpHealth(ToolRunner &tools);

} // namespace velto
