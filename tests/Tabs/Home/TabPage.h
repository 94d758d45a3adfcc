#pragma once

#include "ViewPage.h"

namespace velto {

/// A tab whose every control the keyboard has to reach, and that stays still while nothing changes.
class TabPage : public ViewPage {
    Q_OBJECT

protected:
    void show(VeltoSource &source);
    /// Brings the item into sight first.
    void click(QQuickItem *item);
    /// Walks once around with Tab. Returns the names in the order they came in, and adds to `faults` each control that has no
    /// name, wasn't reached, or couldn't be seen when it was.
    QStringList tabRound(QStringList &faults);
    /// Frames that are drawn while the clock goes on by so much, with a refresh in between.
    qsizetype framesWhileNothingChanges(int milliseconds);
};

} // namespace velto
