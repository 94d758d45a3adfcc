// Any bytes as a hub's document: it is accepted, or refused with a message, and its times are read or not.

#include "Tabs/Quillbox/SnapshotDate.h"
#include "Tabs/Quillbox/VeltoSnapshot.h"

#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void requireTime(const QString &text)
{
    const auto time = velto::snapshotDate(text);
    require(!time || time->isValid());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    requireTime(QString::fromUtf8(bytes));
    const auto read = velto::VeltoSnapshot::decode(bytes);
    if (!read) {
        require(!read.error().isEmpty() && read.error().size() < 200);
        return 0;
    }
    for (const auto &handoff : read->handoffs)
        requireTime(handoff.at);
    for (const auto &heard : read->heard)
        requireTime(heard.at);
    return 0;
}
