#pragma once

#include "TodosView/TodosPage.h"

namespace velto {

/// The tab as a person works it with the keyboard.
class TodosKeysTest : public TodosPage {
    Q_OBJECT

private Q_SLOTS:
    void theArrowsMoveTheSelection();
    void returnOpensTheSelectedRow();
    void returnPressesWhatHasTheKeyboard();
    void controlDFinishesAndControlZBringsBack();
    void controlNWritesATodoByKeysAlone();
    void controlFSearches();
    void escapeGoesOneStepAtATime();
    void otherTabsKeepTheirKeys();
    void theSelectionStaysInSight();
    void theKeyboardReachesEveryControlOfTheList();
    void theCalendarKeepsThePanelsKeys();
    void pressesThatLeadToTypingAskForTheKeyboard();
};

} // namespace velto
