#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <optional>

namespace velto {

/// Any recorder of this desktop counts as the one that the program asks for, as any terminal counts as Terminal.
inline constexpr auto kScreenRecorder = QLatin1StringView("com.obsproject.obs-studio");

/// The identifier of the application whose windows carry this WM_CLASS; the class itself for one that isn't known.
/// Empty if both are.
QString identifierForClass(const QString &instance, const QString &windowClass);
/// A screen recorder, or a program that has the screen locked while it runs, judged by its process.
struct WatchedProgram {
    QString identifier;
    bool locks = false;
    bool mayRest = false; ///< its program is open for other things too: it records only while it takes in a video stream
};
/// Nothing for any other program. `name` is that of the process (as in /proc/PID/comm: 15 bytes at most); `arguments` gives its
/// command line (as in /proc/PID/cmdline), and is asked only where the name doesn't tell.
std::optional<WatchedProgram> watchedProgram(QByteArrayView name, const std::function<QByteArray()> &arguments);

} // namespace velto
