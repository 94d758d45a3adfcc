// Any output of `claude mcp list`: each server that is read is on one line of it, and that line alone gives the same.

#include "Feeds/Servers/McpHealth.h"

#include <QString>
#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView listing(data, qsizetype(size));
    const auto servers = velto::parseServers(listing);
    if (servers.size() > std::ranges::count(listing, '\n') + 1)
        std::abort();
    for (const velto::MCPServer &server : servers) {
        const bool isKnown = server.status == "ok"_L1 || server.needsAuth() || server.isFailing();
        if (!isKnown || server.name.contains(u'\n') || server.detail.contains(u'\n'))
            std::abort();
        const QString status = server.status == "ok"_L1 ? u"✔"_s : server.status;
        const QString line = u'\n' + server.name + u": "_s + server.detail + u" - "_s + status;
        if (velto::parseServers(line.toUtf8()) != QList{server})
            std::abort();
    }
    return 0;
}
