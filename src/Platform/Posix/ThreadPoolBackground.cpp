#include "Platform/Posix/ThreadPoolBackground.h"

namespace velto {

ThreadPoolBackground::ThreadPoolBackground()
{
    // Most of the work waits for a tool, so there may be more of it than there are cores.
    m_pool.setMaxThreadCount(8);
    m_pool.setExpiryTimeout(5000);
}

ThreadPoolBackground::~ThreadPoolBackground()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void ThreadPoolBackground::start(std::function<void()> work, std::function<void()> done)
{
    m_pool.start([this, work = std::move(work), done = std::move(done)] {
        work();
        QMetaObject::invokeMethod(&m_home, done, Qt::QueuedConnection);
    });
}

} // namespace velto
