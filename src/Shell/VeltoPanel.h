#pragma once

#include "Platform/Timer.h"

#include <QQuickView>
#include <QRegion>
#include <functional>

namespace velto {

class Clock;
class PanelOutline;
class StatusItem;
class UI;

/// The one window around the camera housing. It never sizes itself: the delegate places it.
class VeltoPanel : public QQuickView {
    Q_OBJECT
public:
    VeltoPanel(Clock &clock, UI &ui, const PanelOutline &outline);
    ~VeltoPanel() override;

    /// Lets presses outside of the region through and draws the window whole, if the desktop can. Where it can't, the window's
    /// mask does both: while the window changes its size that cuts the strip away, or has it out of place, for a frame.
    std::function<bool(const QRegion &)> limitPresses;

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
    QRegion wantedMask() const;
    void cut(const QRegion &mask);
    void lookForPointer();

    Clock &m_clock;
    UI &m_ui;
    const PanelOutline &m_outline;
    QRegion m_mask;
    QPoint m_rest; ///< where the pointer was on the screen when it was last let rest
    TimerHandle m_settled;
};

} // namespace velto
