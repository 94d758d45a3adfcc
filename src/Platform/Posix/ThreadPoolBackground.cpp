#include "Platform/Posix/ThreadPoolBackground.h"

#include <QCoreApplication>
#include <QEvent>
#include <system_error>
#include <utility>

namespace velto {

namespace {

template <typename Each> Each takeFirst(std::deque<Each> &queue)
{
    Each first = std::move(queue.front());
    queue.pop_front();
    return first;
}

} // namespace

ThreadPoolBackground::Home::Home(ThreadPoolBackground &pool)
    : m_pool(pool)
{
}

void ThreadPoolBackground::Home::customEvent(QEvent *)
{
    std::unique_lock lock(m_pool.m_mutex);
    const auto done = takeFirst(m_pool.m_done);
    lock.unlock();
    --m_pool.m_awaited;
    --s_awaited;
    done();
}

ThreadPoolBackground::ThreadPoolBackground(int threads)
    : m_mostThreads(std::size_t(threads))
    , m_home(*this)
{
}

ThreadPoolBackground::~ThreadPoolBackground()
{
    // Work that was handed over is completed: it may be the removal of a secret.
    release();
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wanted.notify_all();
    m_threads.clear();
    s_awaited -= m_awaited;
}

void ThreadPoolBackground::start(std::function<void()> work, std::function<void()> done)
{
    ++m_awaited;
    ++s_awaited;
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back({std::move(work), std::move(done)});
        addThreads();
    }
    m_wanted.notify_one();
}

void ThreadPoolBackground::hold()
{
    const std::lock_guard lock(m_mutex);
    m_holding = true;
}

void ThreadPoolBackground::release()
{
    {
        const std::lock_guard lock(m_mutex);
        m_holding = false;
        addThreads();
    }
    m_wanted.notify_all();
}

void ThreadPoolBackground::addThreads()
{
    if (m_holding)
        return;
    try {
        for (; m_idle < m_waiting.size() && m_threads.size() < m_mostThreads; ++m_idle)
            m_threads.emplace_back([this] { serve(); });
    } catch (const std::system_error &error) {
        // What waits is taken by a thread that is busy now, or by one that the next job gets.
        qWarning("No thread for background work: %s", error.what());
    }
}

void ThreadPoolBackground::serve()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wanted.wait(lock, [this] { return m_ending || (!m_holding && !m_waiting.empty()); });
        if (m_waiting.empty())
            return;
        --m_idle;
        Job job = takeFirst(m_waiting);
        lock.unlock();
        std::exchange(job.work, {})(); // and let go of what it holds, before anybody hears
        lock.lock();
        m_done.push_back(std::move(job.done));
        lock.unlock();
        QCoreApplication::postEvent(&m_home, new QEvent(QEvent::User));
        lock.lock();
        ++m_idle;
    }
}

} // namespace velto
