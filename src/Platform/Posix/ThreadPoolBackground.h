#pragma once

#include "Platform/Background.h"

#include <QObject>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace velto {

/// A small thread pool. Its destructor waits for all work, so tools are abandoned first (see PosixToolRunner) and the program
/// limits its end (see endsWithin).
///
/// A thread is made when there is more work than idle threads, and stays: waiting costs nothing, while QThreadPool wakes its
/// threads under locks that it still holds, and once more to end them. And the thread sanitizer sees these locks, unlike Qt's.
class ThreadPoolBackground final : public Background {
public:
    /// Most work waits for a tool, so there may be more of it at once than there are cores. With one thread it is done in order.
    explicit ThreadPoolBackground(int threads = 8);
    ~ThreadPoolBackground() override;

    void start(std::function<void()> work, std::function<void()> done) override;
    /// Whether the UI thread is about to hear of work of any pool. UI thread.
    static bool isAwaited() { return s_awaited > 0; }

    /// Holds back what is started from now on until release(), so that the first frame has the machine to itself.
    /// UI thread, like release().
    void hold();
    void release();

private:
    struct Job {
        std::function<void()> work;
        std::function<void()> done;
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

    /// Makes threads for the jobs that no idle thread will take. UI thread, with m_mutex locked.
    void addThreads();
    /// What each thread does.
    void serve();

    /// Jobs of all pools whose `done` is still to be called; UI thread, like m_awaited.
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the program has one UI thread
    static inline int s_awaited = 0;
    int m_awaited = 0; ///< those of this pool

    const std::size_t m_mostThreads;
    std::mutex m_mutex; ///< guards what follows, up to m_home
    std::condition_variable m_wanted; ///< a job may be taken, or the end has come
    std::deque<Job> m_waiting;
    std::deque<std::function<void()>> m_done;
    std::size_t m_idle = 0; ///< threads that wait, or are about to
    bool m_holding = false;
    bool m_ending = false;

    Home m_home;
    std::vector<std::jthread> m_threads;
};

} // namespace velto
