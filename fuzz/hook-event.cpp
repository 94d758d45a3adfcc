// Any bytes as the body of a hook call: the limits of each field hold.

#include "Hooks/HookEvent.h"

#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void requireShort(const std::optional<QString> &text, qsizetype limit)
{
    require(!text || text->size() <= limit);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto now = QDateTime::fromMSecsSinceEpoch(0);
    const auto event = velto::HookEvent::parse(QByteArrayView(data, qsizetype(size)), now);
    if (!event)
        return 0;
    require(event->event.size() < 64);
    require(!event->sessionId || event->sessionId->size() == 36);
    requireShort(event->message, 200);
    requireShort(event->tool, 40);
    requireShort(event->toolDetail, 80);
    require(!event->toolDetail || !event->toolDetail->contains(u'\n'));
    require(event->at == now);
    return 0;
}
