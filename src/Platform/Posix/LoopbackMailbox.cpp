#include "Platform/Posix/LoopbackMailbox.h"

#include <sys/eventfd.h>
#include <utility>

namespace velto {

LoopbackMailbox::LoopbackMailbox()
    : m_event(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

void LoopbackMailbox::post(ConnectionId connection, QByteArray reply)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_letters.push_back({connection, std::move(reply)});
    }
    ring();
}

void LoopbackMailbox::stop()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_stopping = true;
    }
    ring();
}

bool LoopbackMailbox::take(std::vector<Letter> &letters)
{
    eventfd_t rings = 0;
    eventfd_read(m_event.get(), &rings);
    const std::scoped_lock lock(m_mutex);
    letters.clear();
    letters.swap(m_letters);
    return m_stopping;
}

void LoopbackMailbox::ring()
{
    eventfd_write(m_event.get(), 1);
}

} // namespace velto
