#pragma once

#include "ViewPage.h"

namespace velto {

/// A tab that scrolls and that doesn't move while nothing changes.
class TabPage : public ViewPage {
    Q_OBJECT

protected:
    void show(VeltoSource &source);
    /// Scrolls the item into sight first.
    void click(QQuickItem *item);
    /// The number of frames drawn while the clock advances by so much, with a refresh in between.
    qsizetype framesWhileNothingChanges(int milliseconds);
};

} // namespace velto
