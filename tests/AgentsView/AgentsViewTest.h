#pragma once

#include "AgentsView/AgentsPage.h"

namespace velto {

/// The tab as a person sees it, and what a refresh does to it.
class AgentsViewTest : public AgentsPage {
    Q_OBJECT

private Q_SLOTS:
    void everyStateDrawsWithoutAWarning_data();
    void everyStateDrawsWithoutAWarning();
    void sevenWaitingFoldAndSixDoNot();
    void sessionsOfTheOtherMachineStandBelow();
    void connectingIsAgreedToInASheet();
    void aRowKeepsItsIdentityAndItsMenuOverARefresh();
    void aPageAtItsTopStaysThere();
    void aRefreshTouchesNoMoreThanHasChanged();
};

} // namespace velto
