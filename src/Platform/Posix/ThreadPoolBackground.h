#pragma once

#include "Platform/Background.h"

#include <QObject>
#include <QRunnable>
#include <QThreadPool>
#include <deque>
#include <mutex>

namespace velto {

/// A small thread pool. Its destructor waits for all work, so tools are abandoned first (see PosixToolRunner) and the program
/// limits its end (see endsWithin).
///
/// The pool only provides threads: work is passed to them and back in queues under our own lock. The thread sanitizer can't see
/// Qt's locks, and would report what they order as races.
class ThreadPoolBackground final : public Background {
public:
    /// Most work waits for a tool, so there may be more of it at once than there are cores. With one thread it is done in order.
    explicit ThreadPoolBackground(int threads = 8);
    ~ThreadPoolBackground() override;

    void start(std::function<void()> work, std::function<void()> done) override;

    /// Holds back what is started from now on until release(), so that the first frame has the machine to itself.
    /// UI thread, like release().
    void hold() { m_holding = true; }
    void release();

private:
    struct Job {
        std::function<void()> work;
        std::function<void()> done;
    };
    /// Started once for each job that waits.
    class Turn final : public QRunnable {
    public:
        explicit Turn(ThreadPoolBackground &pool);
        void run() override;

    private:
        ThreadPoolBackground &m_pool;
    };
    /// Lives on the UI thread, and gets an event for each job that is done.
    class Home final : public QObject {
    public:
        explicit Home(ThreadPoolBackground &pool);

    protected:
        void customEvent(QEvent *event) override;

    private:
        ThreadPoolBackground &m_pool;
    };

    bool m_holding = false;
    int m_held = 0; ///< jobs that wait for release()
    std::mutex m_mutex; ///< guards what follows
    std::deque<Job> m_waiting;
    std::deque<std::function<void()>> m_done;

    Turn m_turn;
    QThreadPool m_pool;
    Home m_home;
};

} // namespace velto
