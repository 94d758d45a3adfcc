#pragma once

#include <QByteArrayView>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <optional>

namespace velto {

class Files;
class ToolRunner;

/// One Claude Code session, as `claude agents --json` lists it (https://docs.claude.com/en/docs/claude-code).
struct Agent {
    QString id;
    std::optional<QString> name;
    QString state; ///< "working", "blocked", or another word of Claude Code's
    std::optional<QString> cwd;
    double startedAt = 0; ///< milliseconds since 1970-01-01 UTC
    std::optional<QString> kind;
    std::optional<QString> sessionId;
    std::optional<QString> detail; ///< what the session is doing, from its state file

    /// The name, else the folder's name, else the id.
    QString title() const;
    /// Whether `claude --resume` can be given this session's id safely.
    bool canResume() const;
    bool isWorking() const { return state == QLatin1String("working"); }
    bool isBlocked() const { return state == QLatin1String("blocked"); }
    /// What Claude Code's hook calls name it by, else its id.
    QString session() const { return sessionId.value_or(id); }

    bool operator==(const Agent &) const = default;
};

/// The sessions of a listing as it was printed; nothing if it isn't such a listing. Any thread.
std::optional<QList<Agent>> parseAgents(QByteArrayView listing);

/// Asks Claude Code for its live sessions: working ones first, the newest leading. Nothing if the listing failed.
/// Blocks for up to 17 seconds; never on the UI thread.
std::optional<QList<Agent>> loadAgents(ToolRunner &tools, const Files &files, const QString &home);

} // namespace velto
