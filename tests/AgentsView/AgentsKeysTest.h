#pragma once

#include "AgentsView/AgentsPage.h"

namespace velto {

/// The tab as a person works it with the keyboard.
class AgentsKeysTest : public AgentsPage {
    Q_OBJECT

private Q_SLOTS:
    void closingThePanelClosesWhatIsOpenOverIt();
    void theKeyboardGoesOnWhereARowGoes();
    void theKeyboardReachesEveryControl();
};

} // namespace velto
