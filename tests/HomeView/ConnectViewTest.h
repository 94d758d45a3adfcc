#pragma once

#include "HomeView/TabPage.h"

namespace velto {

/// The Connect tab with everything open, as a person walks and presses it.
class ConnectViewTest : public TabPage {
    Q_OBJECT

private Q_SLOTS:
    void theKeyboardReachesEveryControl();
    void tilesAndServersKeepTheirIdentityOverARefresh();
    void aTickThatChangesNothingPaintsNothing();
    void aTokenIsTypedSavedAndRemoved();
    void aServerIsTypedAndAdded();
    void thePanelMakesWayForTheFolders();

private:
    void open(QStringList forms);
};

} // namespace velto
