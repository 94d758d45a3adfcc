#include "Platform/Linux/X11/PanelKeyboard.h"

#include "Platform/Linux/X11/KeyboardWindow.h"

#include <array>
#include <utility>

namespace velto {

namespace {

constexpr quint32 kFromPager = 2; // EWMH's source for a request made by the user, which window managers always grant
// The fields of WM_HINTS (ICCCM 4.1.2.4) as 32-bit values.
constexpr std::size_t kHintFlags = 0;
constexpr std::size_t kHintGroup = 8;
constexpr quint32 kHasGroup = 1 << 6;

} // namespace

PanelKeyboard::PanelKeyboard(XcbServer &server, FocusMethod method)
    : m_server(server)
    , m_method(method)
{
}

PanelKeyboard::~PanelKeyboard() = default;

xcb_window_t PanelKeyboard::id() const
{
    return m_server.exists() && m_window && m_window->handle() ? xcb_window_t(m_window->winId()) : kNoWindow;
}

xcb_window_t PanelKeyboard::focused() const
{
    auto *connection = m_server.connection();
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return reply ? reply->focus : xcb_window_t(kNoWindow);
}

/// The window may be gone or hidden by the time the request arrives: the error is caught here and ignored.
void PanelKeyboard::giveFocus(xcb_window_t window)
{
    auto *connection = m_server.connection();
    const auto request = xcb_set_input_focus_checked(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    const XcbReply<xcb_generic_error_t> ignored(xcb_request_check(connection, request));
}

void PanelKeyboard::take()
{
    if (!m_window)
        return;
    if (!m_server.exists()) {
        m_window->requestActivate();
        return;
    }
    if (!m_server.viewable(id())) {
        m_wanted = true;
        return;
    }
    m_wanted = false;
    if (m_method == FocusMethod::ManagedWindow) {
        askDesktop();
        return;
    }
    const auto before = focused();
    if (before == id())
        return;
    m_focusBefore = before;
    giveFocus(id());
}

/// The toolkit puts all its windows into one group, and KWin takes a transient of a window that it doesn't manage, as the panel
/// is, for one of its whole group: with the panel it would raise the settings, and give them the keyboard afterwards.
void PanelKeyboard::leaveGroup(xcb_window_t window)
{
    auto hints = m_server.values(window, XCB_ATOM_WM_HINTS);
    if (hints.size() <= kHintGroup)
        return;
    hints[kHintFlags] |= kHasGroup;
    hints[kHintGroup] = id();
    xcb_change_property(m_server.connection(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
                        quint32(hints.size()), hints.data());
}

void PanelKeyboard::askDesktop()
{
    if (!m_keyboard)
        m_keyboard = std::make_unique<KeyboardWindow>(m_window);
    m_keyboard->create();
    const auto window = xcb_window_t(m_keyboard->winId());
    const std::array<xcb_atom_t, 2> hidden{m_server.atom(XcbAtom::SkipTaskbar), m_server.atom(XcbAtom::SkipPager)};
    auto *connection = m_server.connection();
    if (!m_keyboard->isVisible()) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, m_server.atom(XcbAtom::WindowState), XCB_ATOM_ATOM, 32,
                            quint32(hidden.size()), hidden.data());
        leaveGroup(window);
    }
    m_keyboard->take();
    // A window that is merely mapped may be kept waiting behind the one that the user types in.
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = m_server.atom(XcbAtom::ActiveWindow);
    request.data.data32[0] = kFromPager;
    xcb_send_event(connection, false, m_server.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(connection);
}

void PanelKeyboard::shown()
{
    if (m_wanted)
        take();
}

void PanelKeyboard::hidden()
{
    m_wanted = false;
    if (m_keyboard)
        m_keyboard->giveBack();
}

void PanelKeyboard::giveBack()
{
    hidden();
    if (!m_window || id() == kNoWindow || focused() != id())
        return;
    const auto before = std::exchange(m_focusBefore, kNoWindow);
    if (before > XCB_INPUT_FOCUS_POINTER_ROOT && m_server.viewable(before)) {
        giveFocus(before);
        return;
    }
    const auto active = m_server.values(m_server.root(), m_server.atom(XcbAtom::ActiveWindow));
    const bool usable = !active.empty() && active.front() != id() && m_server.viewable(active.front());
    giveFocus(usable ? active.front() : xcb_window_t(XCB_INPUT_FOCUS_POINTER_ROOT));
}

} // namespace velto
