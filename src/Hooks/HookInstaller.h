#pragma once

#include "Hooks/SettingsEdit.h"

#include <QByteArray>
#include <QString>
#include <functional>
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

    /// The state of Velto's hooks in the file.
    enum class Standing : quint8 {
        Absent, ///< or the file can't be read
        Outdated, ///< with another secret or of an older version
        Current,
    };
    Standing standing() const { return reader()(); }
    /// Reads the file as the installer would now: on any thread, and when the installer has gone. The files must not have.
    std::function<Standing()> reader() const;
    bool present() const { return standing() != Standing::Absent; }
    bool needsUpgrade() const { return standing() == Standing::Outdated; }
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

    Files &m_files;
    const Clock &m_clock;
    QString m_settings;
    QString m_token;
    bool m_pastProxy = false;
};

} // namespace velto
