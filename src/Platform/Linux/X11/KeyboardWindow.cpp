#include "Platform/Linux/X11/KeyboardWindow.h"

#include "Platform/Linux/Wayland/NativeHandles.h"

#include <QGuiApplication>
#include <QPainter>

namespace velto {

KeyboardWindow::KeyboardWindow(QWindow *panel)
    : m_panel(panel)
{
    setTitle(panel->title());
    auto format = requestedFormat();
    format.setAlphaBufferSize(8);
    setFormat(format);
    // A dialog gets the keyboard when it is mapped, and floats where windows are tiled.
    setFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    // The panel counts as active while this one is; and this one shows above a full-screen window without ending its full
    // screen.
    setTransientParent(panel);
    // The last of the toolkit's signals about a new focus window. A change amid them would reach others out of order.
    connect(this, &QWindow::activeChanged, this, &KeyboardWindow::passFocusOn);
}

KeyboardWindow::~KeyboardWindow() = default;

void KeyboardWindow::take()
{
    const QSize pixel(1, 1);
    setMinimumSize(pixel);
    setMaximumSize(pixel);
    // At the panel's position, so that an input method's window appears near the field.
    setGeometry(QRect(m_panel ? m_panel->position() : QPoint(), pixel));
    show();
}

void KeyboardWindow::giveBack()
{
    hide();
}

QObject *KeyboardWindow::focusObject() const
{
    return m_panel ? m_panel->focusObject() : QRasterWindow::focusObject();
}

void KeyboardWindow::passFocusOn()
{
    if (m_panel && QGuiApplication::focusWindow() == this)
        makeFocusWindow(*m_panel);
}

bool KeyboardWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return m_panel && QGuiApplication::sendEvent(m_panel, event);
    case QEvent::FocusOut: // to the panel or, if the toolkit couldn't be told, away from it
        return m_panel && (QGuiApplication::focusWindow() == m_panel || QGuiApplication::sendEvent(m_panel, event));
    default:
        return QRasterWindow::event(event);
    }
}

void KeyboardWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(QRect({}, size()), Qt::transparent);
}

} // namespace velto
