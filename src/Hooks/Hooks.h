#pragma once

#include <QString>

namespace velto {

class Defaults;

/// The secret that Claude Code's hook commands carry: at least 32 characters, made at the first call and kept in the defaults, so
/// that the commands in Claude Code's settings stay valid across a restart.
QString hookToken(Defaults &defaults);

/// The command lines that Claude Code runs. Both end with status 0 whatever happens, so that a Velto that isn't running never
/// disturbs a session.
QString hookCommand(const QString &token, bool pastProxy = false);
QString permissionCommand(const QString &token, bool pastProxy = false);
/// What makes the two bypass a proxy that is set and doesn't exempt 127.0.0.1 itself.
inline constexpr char16_t kPastProxy[] = u"--noproxy 127.0.0.1";

} // namespace velto
