#include "Platform/Applications.h"

#include "Platform/Terminals.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::array kRecorders{
    "com.obsproject.obs-studio"_L1,   "com.timpler.screenstudio"_L1, "net.telestream.screenflow10"_L1,
    "net.telestream.screenflow11"_L1, "com.loom.desktop"_L1,         "fm.riverside.desktop"_L1,
    "com.cleanshot.recorder"_L1,      "com.ecamm.EcammLive"_L1,      "com.descript.beachcube"_L1,
};

} // namespace

bool Applications::recorderRuns() const
{
    const QStringList all = running();
    return std::ranges::any_of(kRecorders, [&all](QLatin1StringView recorder) { return all.contains(recorder); });
}

bool Applications::lockerRuns() const
{
    return running().contains(kScreenLocker);
}

bool Applications::terminalInFront() const
{
    const QString front = frontmost();
    return std::ranges::any_of(Terminals::kAll, [&front](Terminals::App app) { return front == Terminals::identifier(app); })
        || front.contains("Code"_L1) || front.contains("cursor"_L1);
}

} // namespace velto
