#pragma once

#include "Tabs/Home/BriefPage.h"

namespace velto {

struct WorkItem;

/// The rows about what comes from outside: reviews, issues, mentions, builds, servers, repositories and the like. Each function
/// adds those of its subject.
class WorkBrief {
    Q_DECLARE_TR_FUNCTIONS(velto::WorkBrief)
public:
    explicit WorkBrief(BriefPage &page)
        : m_page(page)
    {
    }

    void pullRequests();
    void workTools();
    void clipboard();
    void builds();
    void transfers();
    void mcp();
    void repos();
    void usage();

private:
    std::optional<HomeItem::Action> openFirst(const QString &label, const QList<WorkItem> &items) const;

    BriefPage &m_page;
};

} // namespace velto
