#include "Platform/Posix/ThreadPoolBackground.h"

namespace velto {

ThreadPoolBackground::ThreadPoolBackground(int threads)
{
    m_pool.setMaxThreadCount(threads);
    m_pool.setExpiryTimeout(5000);
}

ThreadPoolBackground::~ThreadPoolBackground()
{
    // Work that was handed over is completed: it may be the removal of a secret.
    release();
    m_pool.waitForDone();
}

void ThreadPoolBackground::start(std::function<void()> work, std::function<void()> done)
{
    std::function<void()> both = [this, work = std::move(work), done = std::move(done)] {
        work();
        QMetaObject::invokeMethod(&m_home, done, Qt::QueuedConnection);
    };
    if (m_holding)
        m_held.push_back(std::move(both));
    else
        m_pool.start(std::move(both));
}

void ThreadPoolBackground::release()
{
    m_holding = false;
    for (auto &work : std::exchange(m_held, {}))
        m_pool.start(std::move(work));
}

} // namespace velto
