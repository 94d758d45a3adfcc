#pragma once

#include "HomeView/TabPage.h"

namespace velto {

/// The brief as a person sees it, presses it and walks it with the keyboard.
class HomeViewTest : public TabPage {
    Q_OBJECT

private Q_SLOTS:
    void theKeyboardReachesEveryControl();
    void rowsKeepTheirIdentityOverARefresh();
    void aTickThatChangesNothingPaintsNothing();
    void hostileNamesAreShownAsTheyAre();
    void aVideoPlaysInTheSheetAndGoesWithIt();
    void withoutThePlayerTheBrowserOpensAndItSaysSo();

private:
    /// Late and due todos, a meeting, sessions, a priority and a tool that isn't set up.
    void makeItBusy();
    void copyVideo();
};

} // namespace velto
