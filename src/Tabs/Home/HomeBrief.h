#pragma once

#include "Tabs/Home/BriefPage.h"

namespace velto {

/// Every row of the brief at `now`, the most urgent first; rows of one tone keep the order of their subjects. UI
/// thread only.
QList<HomeItem> homeBrief(const HomeStores &stores, const BriefWays &ways, Workspace &workspace, FileWriter &writer,
                          const Places &places, const QDateTime &now);

} // namespace velto
