#pragma once

#include "Platform/Linux/Wayland/LayerSurface.h"
#include "Platform/PanelWindow.h"
#include "Platform/Timer.h"

#include <memory>

namespace velto {

class Clock;

/// The strip's window as a layer surface on the overlay layer: above bars and full-screen windows, on every workspace, never
/// the keyboard until it asks. The compositor centres it at the output's top edge; of the place only the output and the size
/// count.
class LayerPanelWindow final : public PanelWindow {
    Q_OBJECT
public:
    LayerPanelWindow(WaylandServer &server, Clock &clock, QObject *parent = nullptr);
    ~LayerPanelWindow() override;

    void adopt(QWindow *window) override;
    void place(const QRect &frame) override;
    void show() override;
    void hide() override;
    void raise() override { }
    void takeFocus() override;
    void returnFocus() override;
    bool composited() const override { return true; }
    std::optional<QPoint> pointer() const override { return m_pointer; }
    void setBlurBehind(const QList<QRect> &areas) override;
    void showBehind(QWindow *window, const QRect &frame) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void bringUp();
    void insist();
    void giveUpSurface();
    void activeChanged();
    void writeBlur();

    WaylandServer &m_server;
    Clock &m_clock;
    QPointer<QWindow> m_window;
    std::unique_ptr<LayerSurface> m_strip;
    std::unique_ptr<LayerSurface> m_behind;
    QRect m_frame;
    bool m_wanted = false;
    bool m_keyboardWanted = false;
    std::optional<QPoint> m_pointer;
    QList<QRect> m_blur;
    TimerHandle m_patience;
    TimerHandle m_again;
};

} // namespace velto
