#pragma once

#include "TodosView/TodosPage.h"

namespace velto {

/// The tab as a person sees it, and what changes behind it do to it.
class TodosViewTest : public TodosPage {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyListSaysWhy();
    void aRowSaysWhatTheTodoIs();
    void aPressOpensARow();
    void aDoneTodoCanBeHadBack();
    void anErrorStandsAboveTheListUntilItIsDismissed();
    void theListsAreChosenWhereThereAreSeveral();
    void aSnapshotOfTheHubLeavesTheRowsAlone();
    void whatIsTypedSurvivesChanges();
    void theFormFitsWhateverStandsAboveIt();
    void rowsStandOneBelowTheOther();
    void itGoesWhileThingsMove();
    void tenThousandTodosShowOnlyThoseInSight();
};

} // namespace velto
