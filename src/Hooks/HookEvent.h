#pragma once

#include <QByteArrayView>
#include <QDateTime>
#include <QJsonValue>
#include <QString>
#include <optional>

namespace velto {

/// One call of a Claude Code hook. The body is the JSON object that Claude Code gives its hook commands on standard input:
/// https://docs.claude.com/en/docs/claude-code/hooks
struct HookEvent {
    QString event; ///< "Stop", "Notification", "PermissionRequest", ...; under 64 characters
    std::optional<QString> sessionId; ///< only if it is a well-formed UUID
    std::optional<QString> cwd;
    std::optional<QString> message; ///< at most 200 characters
    std::optional<QString> notification; ///< a Notification's type, such as "permission_prompt"; at most 40 characters
    std::optional<QString> tool; ///< at most 40 characters
    std::optional<QString> toolDetail; ///< what the tool would touch or run; at most 80 characters, one line
    bool toolIsCut = false; ///< `tool` or `toolDetail` says less than what came
    QString wholeTool; ///< the tool's name uncut; empty if there is none
    QJsonValue toolInput = QJsonValue::Undefined; ///< all that the tool is given, of whatever form; undefined if nothing came
    QDateTime at; ///< when it was parsed

    /// Nothing if the body isn't a JSON object or lacks an event name of that length. Any thread.
    static std::optional<HookEvent> parse(QByteArrayView body, const QDateTime &now);
};

} // namespace velto
