// Any bytes as a line of Claude Code's logs: what is read from it is what a plain reader finds, nothing beyond the line is
// accessed, and a line that counts would have been found in a buffer.

#include "Feeds/Usage/UsageBytes.h"
#include "UsagePlain.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static velto::UsageLineParser parser;
    const auto read = parser.parse({data, size});
    const QByteArray line(data, qsizetype(size));
    if (!velto::isBeyondPlain(line) && read != velto::plainUsageLine(line))
        std::abort();
    if (read && velto::findUsageHint(data, data + size) == data + size)
        std::abort();
    return 0;
}
