#pragma once

#include "Platform/Linux/ScreenCasts.h"
#include "Platform/Posix/Descriptor.h"
#include "Platform/Timer.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <memory>

class QSocketNotifier;

namespace velto {

class Clock;

/// The user's screen recorders that run, with or without a window, and the programs that lock the screen: a recorder that works
/// is often nothing but a tray icon, and not every locker tells the session. A screen cast counts as a recorder. The kernel tells
/// when a program starts, by its loader being opened, and when one of these ends; until then nothing is looked at.
class WatchedProcesses final : public QObject {
    Q_OBJECT
public:
    explicit WatchedProcesses(Clock &clock, QObject *parent = nullptr);
    ~WatchedProcesses() override;

    /// Looks, and follows what starts from then on; up to three seconds behind.
    void start();
    /// Whether a program that starts is noticed; otherwise look() is to be called when something changes on the desktop.
    bool followsStarts() const { return bool(m_starts); }
    /// Looks at every process: a millisecond or two. Reports by changed().
    void look();
    QStringList running() const;

Q_SIGNALS:
    void changed();

private:
    struct Followed;
    void programStarted();
    void waiting();
    void awake();
    bool forgetStarts();
    void follow(int process, const QString &identifier);
    void over(int process);

    Clock &m_clock;
    ScreenCasts m_casts;
    Descriptor m_starts;
    std::unique_ptr<QSocketNotifier> m_startNotifier;
    bool m_workBegan = false; ///< this thread waits for background work, and has waited before
    bool m_ignoring = false; ///< starts, since most likely they are tools of ours
    TimerHandle m_soon;
    TimerHandle m_resting; ///< while a program runs that may begin to record at any moment
    QHash<int, std::shared_ptr<Followed>> m_followed;
};

} // namespace velto
