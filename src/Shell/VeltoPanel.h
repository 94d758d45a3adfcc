#pragma once

#include "Platform/Timer.h"

#include <QQuickView>
#include <QRegion>

namespace velto {

class Clock;
class PanelOutline;
class PanelWindow;
class StatusItem;
class UI;

/// The one window around the camera housing. It never sizes itself: the delegate places it.
class VeltoPanel : public QQuickView {
    Q_OBJECT
public:
    VeltoPanel(Clock &clock, UI &ui, const PanelOutline &outline);
    ~VeltoPanel() override;

    /// What the desktop does for this window; null without one. If it can limit presses the window is drawn whole. Otherwise the
    /// window's mask limits them: while the window changes its width that cuts the strip away, or has it out of place, for a
    /// frame.
    PanelWindow *desktop = nullptr;

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The field that would get the keys if the window had the keyboard.
    QQuickItem *textField() const;
    /// Cuts away what the outline doesn't cover, so that presses beside it reach what is behind.
    void outlineMoved();
    void outlineChanged();
    void letPointerRest();
    /// The pixels that the outline covers at this size, soft edge included.
    QRegion pixelsOf(QSizeF shape) const;
    /// Takes presses only within one region and draws only within the other; all is drawn if that is empty.
    void cut(const QRegion &taking, const QRegion &drawn);
    void lookForPointer();

    Clock &m_clock;
    UI &m_ui;
    const PanelOutline &m_outline;
    QRegion m_taking; ///< the presses; what lies outside of it gets its own
    bool m_limited = false; ///< to those
    QSizeF m_swept; ///< as large as all outlines since the black last stood still
    QPoint m_rest; ///< where the pointer was on the screen when it was last let rest
    TimerHandle m_settled;
};

} // namespace velto
