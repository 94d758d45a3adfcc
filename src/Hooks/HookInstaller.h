#pragma once

#include "Hooks/SettingsEdit.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace velto {

class Clock;
class Files;

/// Writes the hook commands into Claude Code's user settings and takes them out again. The file belongs to the user and to
/// Claude Code: everything that isn't Velto's keeps its place, its key order and the exact spelling of its numbers, a copy is
/// made first, and what can't be read is left alone. UI thread.
class HookInstaller {
public:
    /// Any hook command that holds this is Velto's.
    static constexpr char16_t kMarker[] = u"127.0.0.1:4747/";

    HookInstaller(Files &files, const Clock &clock, const QString &home, const QString &token);

    /// Nothing on success, otherwise a sentence for the user; the file is untouched then.
    std::optional<QString> install();
    std::optional<QString> uninstall();

    /// Velto's hooks are in the file, whatever their version.
    bool present() const;
    /// Velto's hooks are in the file, but with another secret or of an older version.
    bool needsUpgrade() const;
    /// What install() adds, as text to agree to.
    QString preview() const;

    /// Whether the commands bypass the proxy. Initially as the commands in the file do.
    bool goesPastProxy() const { return m_pastProxy; }
    void setGoesPastProxy(bool on) { m_pastProxy = on; }
    /// The command that reports events.
    QString eventCommand(bool pastProxy) const;

private:
    enum class Change : quint8 { Install, Uninstall };
    enum class Outcome : quint8 { Done, Outpaced, Unreadable, Failed };
    std::vector<SettingsHook> entries() const;
    std::optional<QString> edit(Change change);
    Outcome attempt(Change change, QString &copy, QString &problem);
    std::optional<QString> backUp(const QByteArray &bytes, QString &copy);
    /// The file's bytes; nothing if they can't be read or aren't text.
    std::optional<QByteArray> text() const;

    Files &m_files;
    const Clock &m_clock;
    QString m_settings;
    QString m_token;
    bool m_pastProxy = false;
};

} // namespace velto
