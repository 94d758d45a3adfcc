#include "Platform/Linux/X11/XembedIcon.h"

#include "Platform/Linux/StatusIcon.h"

#include <QCursor>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QRasterWindow>
#include <QScreen>
#include <string_view>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kFirstSize = 24; // until the tray says how large it is to be
constexpr int kSmallestSize = 22;
constexpr int kLargestSize = 256;
constexpr std::chrono::milliseconds kTipDelay{700};
constexpr quint32 kRequestDock = 0; // SYSTEM_TRAY_REQUEST_DOCK
constexpr quint32 kMapped = 1; // XEMBED_MAPPED
constexpr std::size_t kSizeHints = 18; // ICCCM 4.1.2.3, as many numbers as the property has
constexpr quint32 kSmallestSizeIsSaid = 16; // PMinSize
constexpr quint8 kTransparentDepth = 32;

/// What a tray draws for its other icons, and leaves to these.
class TrayTip final : public QRasterWindow {
public:
    explicit TrayTip(const QString &text)
        : m_text(text)
    {
        setFlags(Qt::ToolTip | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
        const QFontMetrics metrics(QGuiApplication::font());
        const QSize size(metrics.horizontalAdvance(text) + 2 * kMargin, metrics.height() + kMargin);
        const QPoint pointer = QCursor::pos();
        const QScreen *screen = QGuiApplication::screenAt(pointer);
        const QRect room = screen ? screen->geometry() : QRect(pointer, size);
        QRect place(pointer + QPoint(0, kBelow), size);
        if (place.bottom() > room.bottom())
            place.moveBottom(pointer.y() - kMargin);
        place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() + 1 - size.width())));
        setGeometry(place);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto palette = QGuiApplication::palette();
        const QRect all({}, size());
        QPainter painter(this);
        painter.fillRect(all, palette.color(QPalette::ToolTipBase));
        painter.setPen(palette.color(QPalette::ToolTipText));
        painter.drawText(all, Qt::AlignCenter, m_text);
        painter.setOpacity(kEdge);
        painter.drawRect(all.adjusted(0, 0, -1, -1));
    }

private:
    static constexpr int kMargin = 8;
    static constexpr int kBelow = 20; // the pointer's own height
    static constexpr double kEdge = 0.3;

    QString m_text;
};

xcb_atom_t intern(xcb_connection_t *connection, std::string_view name)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, false, quint16(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// The depth of a visual of the screen with this root; 0 if it has none such.
quint8 depthOf(xcb_connection_t *connection, xcb_window_t root, xcb_visualid_t visual)
{
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0; xcb_screen_next(&screens)) {
        if (screens.data->root != root)
            continue;
        if (screens.data->root_visual == visual)
            return screens.data->root_depth;
        for (auto depths = xcb_screen_allowed_depths_iterator(screens.data); depths.rem > 0; xcb_depth_next(&depths)) {
            const auto *visuals = xcb_depth_visuals(depths.data);
            for (int i = 0; i < xcb_depth_visuals_length(depths.data); ++i)
                if (visuals[i].visual_id == visual)
                    return depths.data->depth;
        }
    }
    return 0;
}

xcb_visualid_t rootVisual(xcb_connection_t *connection, xcb_window_t root)
{
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0; xcb_screen_next(&screens))
        if (screens.data->root == root)
            return screens.data->root_visual;
    return 0;
}

} // namespace

XembedIcon::XembedIcon(XcbServer &server, xcb_window_t tray, const QString &description, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_tray(tray)
    , m_description(description)
    , m_size(kFirstSize, kFirstSize)
{
    m_rests.setSingleShot(true);
    m_rests.setInterval(kTipDelay);
    m_rests.callOnTimeout(this, &XembedIcon::showTip);
    auto *connection = m_server.connection();
    const auto wanted = m_server.values(tray, intern(connection, "_NET_SYSTEM_TRAY_VISUAL"));
    if (!wanted.empty() && depthOf(connection, m_server.root(), wanted.front()) == kTransparentDepth)
        m_visual = wanted.front();
    create();
    qGuiApp->installNativeEventFilter(this);
    dock();
}

// The tray may have destroyed the window with its own, so errors are ignored.
XembedIcon::~XembedIcon()
{
    qGuiApp->removeNativeEventFilter(this);
    auto *connection = m_server.connection();
    xcb_free_gc(connection, m_context);
    xcb_discard_reply(connection, xcb_destroy_window_checked(connection, m_window).sequence);
    if (m_colours != XCB_NONE)
        xcb_free_colormap(connection, m_colours);
    xcb_flush(connection);
}

void XembedIcon::create()
{
    auto *connection = m_server.connection();
    m_window = xcb_generate_id(connection);
    const quint32 events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS
        | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    if (m_visual != 0) {
        m_colours = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, m_colours, m_server.root(), m_visual);
        const quint32 values[] = {0, 0, events, m_colours};
        xcb_create_window(connection, kTransparentDepth, m_window, m_server.root(), 0, 0, kFirstSize, kFirstSize, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, m_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    } else {
        const quint32 values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_server.root(), 0, 0, kFirstSize, kFirstSize, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);
    }
    m_context = xcb_generate_id(connection);
    xcb_create_gc(connection, m_context, m_window, 0, nullptr);
    const QByteArray title = m_description.toUtf8();
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, intern(connection, "_NET_WM_NAME"),
                        m_server.atom(XcbAtom::Utf8Text), 8, quint32(title.size()), title.constData());
    std::array<quint32, kSizeHints> hints{};
    hints[0] = kSmallestSizeIsSaid;
    hints[5] = hints[6] = kSmallestSize;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32,
                        quint32(hints.size()), hints.data());
    constexpr std::string_view kClass("velto\0velto", sizeof "velto\0velto"); // instance and class, each with its end
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, kClass.size(),
                        kClass.data());
}

void XembedIcon::dock()
{
    auto *connection = m_server.connection();
    const auto embedInfo = intern(connection, "_XEMBED_INFO");
    const quint32 info[] = {0, kMapped}; // the protocol's version, and the wish to be seen
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, embedInfo, embedInfo, 32, std::size(info), info);
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_tray;
    request.type = intern(connection, "_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = kRequestDock;
    request.data.data32[2] = m_window;
    xcb_discard_reply(
        connection,
        xcb_send_event_checked(connection, false, m_tray, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&request))
            .sequence);
    xcb_flush(connection);
}

bool XembedIcon::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto &event = *static_cast<const xcb_generic_event_t *>(message);
    switch (event.response_type & 0x7f) {
    case XCB_EXPOSE: {
        const auto &exposed = reinterpret_cast<const xcb_expose_event_t &>(event);
        if (exposed.window == m_window && exposed.count == 0)
            paint();
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto &now = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        if (now.window != m_window)
            break;
        if (const QSize size(now.width, now.height); std::exchange(m_size, size) != size)
            paint();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        m_gone = m_gone || reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_window;
        break;
    case XCB_BUTTON_PRESS: {
        const auto &press = reinterpret_cast<const xcb_button_press_event_t &>(event);
        if (press.event != m_window)
            break;
        m_rests.stop();
        m_tip.reset();
        if (press.detail == XCB_BUTTON_INDEX_1)
            Q_EMIT pressed();
        else if (press.detail == XCB_BUTTON_INDEX_3)
            Q_EMIT menuWanted();
        break;
    }
    case XCB_ENTER_NOTIFY:
        if (reinterpret_cast<const xcb_enter_notify_event_t &>(event).event == m_window)
            m_rests.start();
        break;
    case XCB_LEAVE_NOTIFY:
        if (reinterpret_cast<const xcb_enter_notify_event_t &>(event).event == m_window) {
            m_rests.stop();
            m_tip.reset();
        }
        break;
    default:
        break;
    }
    return false;
}

QImage XembedIcon::behind() const
{
    auto *connection = m_server.connection();
    xcb_clear_area(connection, false, m_window, 0, 0, 0, 0);
    xcb_generic_error_t *error = nullptr;
    const XcbReply<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection,
                            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, quint16(m_size.width()),
                                          quint16(m_size.height()), ~0U),
                            &error));
    const XcbReply<xcb_generic_error_t> ignored(error);
    QImage image(m_size, QImage::Format_RGB32);
    image.fill(Qt::black);
    if (reply && xcb_get_image_data_length(reply.get()) == image.sizeInBytes())
        std::copy_n(xcb_get_image_data(reply.get()), image.sizeInBytes(), image.bits());
    return image;
}

void XembedIcon::paint()
{
    const int side = std::min(m_size.width(), m_size.height());
    if (side < 1 || std::max(m_size.width(), m_size.height()) > kLargestSize)
        return;
    QImage image(m_size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (m_visual == 0)
        image = behind();
    QPainter painter(&image);
    painter.drawImage((m_size.width() - side) / 2, (m_size.height() - side) / 2, statusIcon(side));
    painter.end();
    auto *connection = m_server.connection();
    const auto depth =
        m_visual != 0 ? kTransparentDepth : depthOf(connection, m_server.root(), rootVisual(connection, m_server.root()));
    xcb_discard_reply(connection,
                      xcb_put_image_checked(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_context, quint16(m_size.width()),
                                            quint16(m_size.height()), 0, 0, 0, depth, quint32(image.sizeInBytes()),
                                            image.constBits())
                          .sequence);
    xcb_flush(connection);
}

void XembedIcon::showTip()
{
    m_tip = std::make_unique<TrayTip>(m_description);
    m_tip->show();
}

} // namespace velto
