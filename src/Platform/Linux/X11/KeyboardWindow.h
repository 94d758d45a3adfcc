#pragma once

#include <QPointer>
#include <QRasterWindow>

namespace velto {

/// Has the keyboard for the strip's window where that one gets none: desktops that run X11 programs under Wayland give it to
/// windows that they manage. One transparent pixel, on screen only while the panel wants the keyboard. The toolkit is told
/// that the panel has the focus then: the contents of a window take the keyboard only there, and that is where input methods
/// look. Keys still arrive here and go on to the panel. Destroying it gives the keyboard back to whoever had it.
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
    void passFocusOn();

    QPointer<QWindow> m_panel;
};

} // namespace velto
