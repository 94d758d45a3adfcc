#include "Tabs/Home/HomeBrief.h"

#include "Tabs/Home/DayBrief.h"
#include "Tabs/Home/WorkBrief.h"

#include <algorithm>

namespace velto {

QList<HomeItem> homeBrief(const HomeStores &stores, const BriefWays &ways, Workspace &workspace, FileWriter &writer,
                          const Places &places, const QDateTime &now)
{
    BriefPage page{stores, ways, workspace, places, now};
    DayBrief day(page);
    WorkBrief work(page);
    page.addFiles(writer);
    day.agents();
    day.calendar();
    day.focus();
    day.media();
    work.pullRequests();
    work.workTools();
    day.todos();
    day.priority();
    work.clipboard();
    work.builds();
    work.transfers();
    work.mcp();
    work.repos();
    work.usage();
    day.learning();
    std::ranges::stable_sort(page.items, {}, &HomeItem::tone);
    return std::move(page.items);
}

} // namespace velto
