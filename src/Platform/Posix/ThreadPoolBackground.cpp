#include "Platform/Posix/ThreadPoolBackground.h"

#include <QCoreApplication>
#include <QEvent>
#include <chrono>
#include <utility>

namespace velto {

namespace {

/// Longer than a resting program goes without work, so that it doesn't make and end its threads each time.
constexpr std::chrono::milliseconds kThreadRests{60'000};

template <typename Each> Each takeFirst(std::mutex &mutex, std::deque<Each> &queue)
{
    const std::lock_guard lock(mutex);
    Each first = std::move(queue.front());
    queue.pop_front();
    return first;
}

} // namespace

ThreadPoolBackground::Turn::Turn(ThreadPoolBackground &pool)
    : m_pool(pool)
{
    setAutoDelete(false);
}

void ThreadPoolBackground::Turn::run()
{
    Job job = takeFirst(m_pool.m_mutex, m_pool.m_waiting);
    std::exchange(job.work, {})(); // and let go of what it holds, before anybody hears
    {
        const std::lock_guard lock(m_pool.m_mutex);
        m_pool.m_done.push_back(std::move(job.done));
    }
    QCoreApplication::postEvent(&m_pool.m_home, new QEvent(QEvent::User));
}

ThreadPoolBackground::Home::Home(ThreadPoolBackground &pool)
    : m_pool(pool)
{
}

void ThreadPoolBackground::Home::customEvent(QEvent *)
{
    takeFirst(m_pool.m_mutex, m_pool.m_done)();
}

ThreadPoolBackground::ThreadPoolBackground(int threads)
    : m_turn(*this)
    , m_home(*this)
{
    m_pool.setMaxThreadCount(threads);
    m_pool.setExpiryTimeout(int(kThreadRests.count()));
}

ThreadPoolBackground::~ThreadPoolBackground()
{
    // Work that was handed over is completed: it may be the removal of a secret.
    release();
    m_pool.waitForDone();
}

void ThreadPoolBackground::start(std::function<void()> work, std::function<void()> done)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back({std::move(work), std::move(done)});
    }
    if (m_holding)
        ++m_held;
    else
        m_pool.start(&m_turn);
}

void ThreadPoolBackground::release()
{
    m_holding = false;
    for (int jobs = std::exchange(m_held, 0); jobs > 0; --jobs)
        m_pool.start(&m_turn);
}

} // namespace velto
