#pragma once

#include <QPointer>
#include <QRasterWindow>

namespace velto {

/// Has the keyboard for the strip's window where that one gets none: desktops that run X11 programs under Wayland give it to
/// windows that they manage. One transparent pixel, on screen only while the panel wants the keyboard; what arrives here
/// goes on to the panel, whose items are what input methods see. Destroying it gives the keyboard back to whoever had it.
/// UI thread only.
class KeyboardWindow final : public QRasterWindow {
    Q_OBJECT
public:
    explicit KeyboardWindow(QWindow *panel);
    ~KeyboardWindow() override;

    /// Asks the desktop for the keyboard. The panel learns of it as if it had the keyboard itself.
    void take();
    /// Gives it back.
    void giveBack();

    QObject *focusObject() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPointer<QWindow> m_panel;
};

} // namespace velto
