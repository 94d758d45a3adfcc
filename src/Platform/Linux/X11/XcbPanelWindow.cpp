#include "Platform/Linux/X11/XcbPanelWindow.h"

#include "Platform/Linux/X11/KeyboardWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>
#include <xcb/xfixes.h>

namespace velto {

namespace {

// The toolkit's own property for the window type: an atom set by hand would be overwritten by its next call.
constexpr auto kWindowTypeProperty = "_q_xcb_wm_window_type";
constexpr int kDesktop = 2; // the workspace number that means all of them
// Compositors give a dock neither shadow nor fade. A notification too, since wlroots gives the keyboard to every other
// unmanaged window that is mapped.
constexpr int kStrip = 0x4 | 0x800;
/// Longer than the server takes to resize a window. One that gets its old size back isn't reported as resized.
constexpr std::chrono::milliseconds kLongestResize{50};

/// The program's own visible menus and tooltips.
QWindowList ownPopups(const QWindow *panel)
{
    auto windows = QGuiApplication::allWindows();
    windows.removeIf([&](const QWindow *window) {
        const bool popup = window->type() == Qt::Popup || window->type() == Qt::ToolTip || window->transientParent() == panel;
        return window == panel || !popup || !window->isVisible() || qobject_cast<const KeyboardWindow *>(window);
    });
    return windows;
}

bool overOwnPopup(const QWindow *panel, QPoint pointer)
{
    const auto popups = ownPopups(panel);
    return std::any_of(popups.begin(), popups.end(), [&](const QWindow *popup) { return popup->geometry().contains(pointer); });
}

} // namespace

XcbPanelWindow::XcbPanelWindow(XcbServer &server, FocusMethod method, QObject *parent)
    : PanelWindow(parent)
    , m_server(server)
    , m_keyboard(server, method)
    , m_guest(method == FocusMethod::ManagedWindow)
{
    m_resizing.setSingleShot(true);
    m_resizing.setInterval(kLongestResize);
    connect(&m_resizing, &QTimer::timeout, this, &XcbPanelWindow::resized);
    connect(&m_server, &XcbServer::rootPropertyChanged, this, &XcbPanelWindow::rootChanged);
    connect(&m_server, &XcbServer::obscured, this, &XcbPanelWindow::covered);
    connect(&m_server, &XcbServer::buttonPressed, this, &XcbPanelWindow::pressed);
    connect(&m_server, &XcbServer::selectionOwnerChanged, this, [this](xcb_atom_t selection) {
        if (m_compositedKnown && selection == m_server.atom(XcbAtom::CompositingManager))
            updateComposited();
    });
}

void XcbPanelWindow::adopt(QWindow *window)
{
    m_window = window;
    m_keyboard.adopt(window);
    auto format = window->requestedFormat();
    format.setAlphaBufferSize(8);
    window->setFormat(format);
    window->setFlags(Qt::Window | Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
                     | Qt::NoDropShadowWindowHint);
    window->setProperty(kWindowTypeProperty, kStrip);
    window->installEventFilter(this);
    if (window->handle())
        windowMade();
}

bool XcbPanelWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        if (event->type() == QEvent::PlatformSurface
            && static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
            windowMade();
        else if (event->type() == QEvent::Expose && m_window->isExposed())
            m_keyboard.shown();
        else if (event->type() == QEvent::Hide)
            m_keyboard.hidden();
        // Under Wayland the X server knows the pointer only above X11 windows. A window that grows over where it last was is
        // entered without the user; where the pointer really is, it moves too.
        else if (event->type() == QEvent::Enter && m_guest)
            return true;
    }
    return PanelWindow::eventFilter(watched, event);
}

xcb_window_t XcbPanelWindow::id() const
{
    return m_server.exists() && m_window && m_window->handle() ? xcb_window_t(m_window->winId()) : kNoWindow;
}

void XcbPanelWindow::windowMade()
{
    if (!m_server.exists())
        return;
    // The contents stay at the middle of the upper edge when the window is resized. Otherwise the strip would be out of place,
    // or invisible, until the next frame.
    const quint32 gravity = XCB_GRAVITY_NORTH;
    xcb_change_window_attributes(m_server.connection(), id(), XCB_CW_BIT_GRAVITY, &gravity);
    // picom's (man page, "shadow"): it would draw a shadow around the window, not around what is seen of it.
    const quint32 none = 0;
    xcb_change_property(m_server.connection(), XCB_PROP_MODE_REPLACE, id(), m_server.atom(XcbAtom::CompositorShadow),
                        XCB_ATOM_CARDINAL, 32, 1, &none);
    m_server.select(id(), XCB_EVENT_MASK_VISIBILITY_CHANGE);
    m_server.select(m_server.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    writeBlur();
}

void XcbPanelWindow::place(const QRect &frame)
{
    if (!m_window)
        return;
    const QRect target(frame.topLeft(), frame.size().expandedTo(QSize(1, 1)));
    if (m_window->geometry() == target)
        return;
    const bool resizes = m_window->isExposed() && m_window->size() != target.size();
    m_window->setGeometry(target);
    // The toolkit learns the new size from the server's answer. A frame painted before it has the old size, and would appear in
    // the corner of the window, which has the new one.
    if (resizes)
        m_resizing.start();
}

void XcbPanelWindow::resized()
{
    m_resizing.stop();
    if (m_window && std::exchange(m_frameHeld, false))
        m_window->requestUpdate();
}

void XcbPanelWindow::show()
{
    if (m_window)
        m_window->show();
    raise();
}

void XcbPanelWindow::hide()
{
    if (m_window)
        m_window->hide();
}

std::optional<QPoint> XcbPanelWindow::pointer() const
{
    return m_window ? std::optional(QCursor::pos() - m_window->position()) : std::nullopt;
}

void XcbPanelWindow::raise()
{
    if (!m_window || !m_window->isVisible())
        return;
    m_window->raise();
    const auto popups = ownPopups(m_window);
    for (auto *popup : popups)
        popup->raise();
}

void XcbPanelWindow::rootChanged(xcb_atom_t property)
{
    if (property == m_server.atom(XcbAtom::ActiveWindow) || property == m_server.atom(XcbAtom::ClientListStacking))
        raiseSoon();
}

/// A window manager changes several properties for one change of its windows: one raise covers them all.
void XcbPanelWindow::raiseSoon()
{
    m_mayAnswerCover = true;
    if (m_raisePending)
        return;
    m_raisePending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_raisePending = false;
            raise();
        },
        Qt::QueuedConnection);
}

/// Answers once: another window that raises itself too, such as a screen locker's, would otherwise keep both busy for ever.
void XcbPanelWindow::covered(xcb_window_t window)
{
    if (!m_mayAnswerCover || window != id())
        return;
    m_mayAnswerCover = false;
    raise();
}

bool XcbPanelWindow::composited() const
{
    if (!m_server.exists())
        return true;
    if (!m_compositedKnown) {
        const auto selection = m_server.atom(XcbAtom::CompositingManager);
        m_server.followSelection(selection);
        m_composited = m_server.selectionOwner(selection) != kNoWindow;
        m_compositedKnown = true;
    }
    return m_composited;
}

void XcbPanelWindow::updateComposited()
{
    const bool now = m_server.selectionOwner(m_server.atom(XcbAtom::CompositingManager)) != kNoWindow;
    if (std::exchange(m_composited, now) != now)
        Q_EMIT compositedChanged();
}

void XcbPanelWindow::watchPresses(bool on)
{
    m_server.watchButtons(on);
}

void XcbPanelWindow::pressed()
{
    if (!m_window || !m_window->isVisible())
        return;
    const auto pointer = QCursor::pos();
    const QPoint place = pointer - m_window->position();
    const bool within = m_taking.isEmpty() ? QRect({}, m_window->size()).contains(place) : m_taking.contains(place);
    if (!within && !overOwnPopup(m_window, pointer))
        Q_EMIT pressedElsewhere();
}

bool XcbPanelWindow::limitPresses(const QRegion &region)
{
    if (id() == kNoWindow)
        return false;
    m_taking = region;
    const auto ratio = m_window->devicePixelRatio();
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect &each : region) {
        const QRect native(QPoint(qFloor(each.left() * ratio), qFloor(each.top() * ratio)),
                           QPoint(qCeil((each.right() + 1) * ratio) - 1, qCeil((each.bottom() + 1) * ratio) - 1));
        rectangles.push_back({qint16(native.x()), qint16(native.y()), quint16(native.width()), quint16(native.height())});
    }
    auto *connection = m_server.connection();
    const xcb_xfixes_region_t shape = region.isEmpty() ? xcb_xfixes_region_t(XCB_NONE) : xcb_generate_id(connection);
    if (shape != XCB_NONE)
        xcb_xfixes_create_region(connection, shape, quint32(rectangles.size()), rectangles.data());
    xcb_xfixes_set_window_shape_region(connection, id(), XCB_SHAPE_SK_INPUT, 0, 0, shape);
    if (shape != XCB_NONE)
        xcb_xfixes_destroy_region(connection, shape);
    return true;
}

void XcbPanelWindow::setBlurBehind(const QList<QRect> &areas)
{
    if (std::exchange(m_blur, areas) != areas)
        writeBlur();
}

void XcbPanelWindow::showBehind(QWindow *window, const QRect &frame)
{
    window->setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    window->setProperty(kWindowTypeProperty, kDesktop);
    window->setGeometry(frame);
    window->show();
    window->lower();
}

/// KWin's hint: a list of x, y, width and height in the window's own pixels (KWindowEffects::enableBlurBehind writes the same).
void XcbPanelWindow::writeBlur()
{
    if (id() == kNoWindow)
        return;
    const auto property = m_server.atom(XcbAtom::BlurBehind);
    if (m_blur.isEmpty()) {
        xcb_delete_property(m_server.connection(), id(), property);
        return;
    }
    const auto ratio = m_window->devicePixelRatio();
    std::vector<quint32> values;
    for (const auto &area : m_blur)
        for (const int value : {area.x(), area.y(), area.width(), area.height()})
            values.push_back(quint32(std::max(0L, std::lround(value * ratio))));
    xcb_change_property(m_server.connection(), XCB_PROP_MODE_REPLACE, id(), property, XCB_ATOM_CARDINAL, 32,
                        quint32(values.size()), values.data());
}

} // namespace velto
