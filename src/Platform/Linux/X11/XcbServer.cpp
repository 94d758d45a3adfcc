#include "Platform/Linux/X11/XcbServer.h"

#include <QGuiApplication>
#include <string_view>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

namespace velto {

namespace {

// In the order of XcbAtom; a %1 stands for the screen's number.
constexpr std::array<const char *, std::size_t(XcbAtom::Count)> kAtomNames{"_NET_ACTIVE_WINDOW",
                                                                           "_NET_CLIENT_LIST",
                                                                           "_NET_CLIENT_LIST_STACKING",
                                                                           "_NET_WORKAREA",
                                                                           "_NET_WM_STRUT_PARTIAL",
                                                                           "_NET_WM_CM_S%1",
                                                                           "_NET_SYSTEM_TRAY_S%1",
                                                                           "MANAGER",
                                                                           "_KDE_NET_WM_BLUR_BEHIND_REGION",
                                                                           "_COMPTON_SHADOW",
                                                                           "CLIPBOARD",
                                                                           "UTF8_STRING",
                                                                           "TARGETS",
                                                                           "INCR",
                                                                           "x-kde-passwordManagerHint",
                                                                           "_NET_WM_STATE",
                                                                           "_NET_WM_STATE_SKIP_TASKBAR",
                                                                           "_NET_WM_STATE_SKIP_PAGER",
                                                                           "VELTO_TRANSFER"};

constexpr std::string_view kKeyboardExtension = "XKEYBOARD";
constexpr quint32 kMostValues = 4096;
constexpr quint8 kNewKeyboard = 0; // the X keyboard extension's XkbNewKeyboardNotify
constexpr quint8 kNewMap = 1; // and XkbMapNotify
constexpr quint32 kFirstWheelButton = 4;
constexpr quint32 kLastWheelButton = 7;

xcb_window_t rootOf(xcb_connection_t *connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data->root : kNoWindow;
}

} // namespace

XcbServer::XcbServer(QObject *parent)
    : QObject(parent)
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return;
    m_connection = x11->connection();
    // The display's name ends with the screen's number: ":0.1".
    const auto display = qgetenv("DISPLAY");
    const auto dot = display.lastIndexOf('.');
    if (dot > display.lastIndexOf(':'))
        m_screen = display.mid(dot + 1).toInt();
    m_root = rootOf(m_connection, m_screen);
    for (std::size_t i = 0; i < m_asked.size(); ++i) {
        const auto name = QByteArray(kAtomNames[i]).replace("%1", QByteArray::number(m_screen));
        m_asked[i] = xcb_intern_atom(m_connection, false, quint16(name.size()), name.constData());
    }
    m_keyboardAsked = xcb_query_extension(m_connection, quint16(kKeyboardExtension.size()), kKeyboardExtension.data());
    xcb_prefetch_extension_data(m_connection, &xcb_input_id);
    xcb_flush(m_connection); // the answers come while the stores are made
    qGuiApp->installNativeEventFilter(this);
}

XcbServer::~XcbServer()
{
    if (!m_connection || !qGuiApp)
        return;
    qGuiApp->removeNativeEventFilter(this);
    if (m_collected)
        return;
    for (const auto asked : m_asked)
        xcb_discard_reply(m_connection, asked.sequence);
    xcb_discard_reply(m_connection, m_keyboardAsked.sequence);
}

void XcbServer::collect() const
{
    if (!m_connection || m_collected)
        return;
    m_collected = true;
    for (std::size_t i = 0; i < m_asked.size(); ++i) {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, m_asked[i], nullptr));
        m_atoms[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
    const XcbReply<xcb_query_extension_reply_t> keyboard(xcb_query_extension_reply(m_connection, m_keyboardAsked, nullptr));
    m_keyboardEvent = keyboard && keyboard->present ? keyboard->first_event : quint8(0);
    // The toolkit has queried these two and agreed on their versions; xcb caches the result.
    const auto *fixes = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    m_fixesEvent = fixes && fixes->present ? fixes->first_event : quint8(0);
    const auto *input = xcb_get_extension_data(m_connection, &xcb_input_id);
    m_inputOpcode = input && input->present ? input->major_opcode : quint8(0);
}

xcb_atom_t XcbServer::atom(XcbAtom name) const
{
    collect();
    return m_atoms[std::size_t(name)];
}

std::vector<quint32> XcbServer::values(xcb_window_t window, xcb_atom_t property) const
{
    if (!m_connection)
        return {};
    const auto asked = xcb_get_property(m_connection, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostValues);
    xcb_generic_error_t *error = nullptr;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, asked, &error));
    const XcbReply<xcb_generic_error_t> ignored(error);
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / int(sizeof(quint32))};
}

void XcbServer::select(xcb_window_t window, quint32 events) const
{
    if (!m_connection)
        return;
    xcb_generic_error_t *error = nullptr;
    const XcbReply<xcb_get_window_attributes_reply_t> now(
        xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, window), &error));
    const XcbReply<xcb_generic_error_t> ignored(error);
    if (!now || (now->your_event_mask & events) == events)
        return;
    const quint32 mask = now->your_event_mask | events;
    const auto request = xcb_change_window_attributes_checked(m_connection, window, XCB_CW_EVENT_MASK, &mask);
    const XcbReply<xcb_generic_error_t> gone(xcb_request_check(m_connection, request));
}

bool XcbServer::viewable(xcb_window_t window) const
{
    if (!m_connection || window == kNoWindow)
        return false;
    xcb_generic_error_t *error = nullptr;
    const XcbReply<xcb_get_window_attributes_reply_t> now(
        xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, window), &error));
    const XcbReply<xcb_generic_error_t> ignored(error);
    return now && now->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t XcbServer::selectionOwner(xcb_atom_t selection) const
{
    if (!m_connection || selection == XCB_ATOM_NONE)
        return kNoWindow;
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, xcb_get_selection_owner(m_connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t(kNoWindow);
}

void XcbServer::followSelection(xcb_atom_t selection) const
{
    collect();
    if (!m_connection || !m_fixesEvent || selection == XCB_ATOM_NONE)
        return;
    xcb_xfixes_select_selection_input(m_connection, m_root, selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                          | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                                          | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

bool XcbServer::watchButtons(bool on)
{
    collect();
    if (!m_connection || !m_inputOpcode)
        return false;
    const struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } request{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
              on ? quint32(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS) | quint32(XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN) : 0};
    xcb_input_xi_select_events(m_connection, m_root, 1, &request.head);
    xcb_flush(m_connection);
    return true;
}

bool XcbServer::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    return handle(*static_cast<const xcb_generic_event_t *>(message));
}

bool XcbServer::handle(const xcb_generic_event_t &event)
{
    const auto type = quint8(event.response_type & 0x7f);
    switch (type) {
    case XCB_PROPERTY_NOTIFY: {
        const auto &property = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        if (property.window == m_root)
            Q_EMIT rootPropertyChanged(property.atom);
        else if (property.atom == XCB_ATOM_WM_CLASS)
            Q_EMIT classChanged(property.window);
        else if (property.atom == atom(XcbAtom::Transfer) && property.state == XCB_PROPERTY_NEW_VALUE)
            Q_EMIT pieceCame(property.window);
        return false;
    }
    case XCB_DESTROY_NOTIFY:
        Q_EMIT windowGone(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window);
        return false;
    case XCB_VISIBILITY_NOTIFY: {
        const auto &visibility = reinterpret_cast<const xcb_visibility_notify_event_t &>(event);
        if (visibility.state != XCB_VISIBILITY_UNOBSCURED)
            Q_EMIT obscured(visibility.window);
        return false;
    }
    case XCB_SELECTION_NOTIFY: {
        const auto &answer = reinterpret_cast<const xcb_selection_notify_event_t &>(event);
        Q_EMIT selectionCame(answer.requestor, answer.property);
        return false;
    }
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE: {
        const auto &key = reinterpret_cast<const xcb_key_press_event_t &>(event);
        if (key.event != m_root)
            return false;
        Q_EMIT keyChanged(type == XCB_KEY_PRESS, key.detail, key.time);
        return true;
    }
    case XCB_MAPPING_NOTIFY:
        if (reinterpret_cast<const xcb_mapping_notify_event_t &>(event).request != XCB_MAPPING_POINTER)
            Q_EMIT keyboardChanged();
        return false;
    case XCB_GE_GENERIC:
        handleGeneric(reinterpret_cast<const xcb_ge_generic_event_t &>(event));
        return false;
    default:
        break;
    }
    // The server assigns the numbers of extension events.
    if (m_fixesEvent && type == m_fixesEvent + XCB_XFIXES_SELECTION_NOTIFY)
        Q_EMIT selectionOwnerChanged(reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event).selection);
    else if (m_keyboardEvent && type == m_keyboardEvent && (event.pad0 == kNewKeyboard || event.pad0 == kNewMap))
        Q_EMIT keyboardChanged();
    return false;
}

void XcbServer::handleGeneric(const xcb_ge_generic_event_t &event)
{
    if (!m_inputOpcode || event.extension != m_inputOpcode)
        return;
    if (event.event_type == XCB_INPUT_RAW_TOUCH_BEGIN) {
        Q_EMIT buttonPressed();
    } else if (event.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        const auto button = reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event).detail;
        if (button < kFirstWheelButton || button > kLastWheelButton)
            Q_EMIT buttonPressed();
    }
}

} // namespace velto
