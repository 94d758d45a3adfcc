#pragma once

#include "ViewPage.h"

namespace velto {

/// A tab that scrolls, and that stays still while nothing changes.
class TabPage : public ViewPage {
    Q_OBJECT

protected:
    void show(VeltoSource &source);
    /// Brings the item into sight first.
    void click(QQuickItem *item);
    /// Frames that are drawn while the clock goes on by so much, with a refresh in between.
    qsizetype framesWhileNothingChanges(int milliseconds);
};

} // namespace velto
