#include "Platform/Linux/X11/XcbClipboardText.h"

#include "Platform/Clock.h"

#include <utility>

namespace velto {

namespace {

constexpr std::chrono::seconds kPatience{5};
constexpr int kWord = 4; // what the length of a property is asked in

} // namespace

XcbClipboardText::XcbClipboardText(XcbServer &server, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_clock(clock)
{
    connect(&m_server, &XcbServer::selectionCame, this, &XcbClipboardText::answered);
}

XcbClipboardText::~XcbClipboardText()
{
    if (m_window != kNoWindow)
        xcb_destroy_window(m_server.connection(), m_window);
}

void XcbClipboardText::read(int longest, Done done)
{
    finish(std::nullopt);
    m_longest = longest;
    m_done = std::move(done);
    auto *connection = m_server.connection();
    m_window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_server.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_convert_selection(connection, m_window, m_server.atom(XcbAtom::Clipboard), m_server.atom(XcbAtom::Utf8Text),
                          m_server.atom(XcbAtom::Transfer), XCB_CURRENT_TIME);
    xcb_flush(connection);
    m_patience = m_clock.after(kPatience, [this] { finish(std::nullopt); });
}

void XcbClipboardText::answered(xcb_window_t window, xcb_atom_t property)
{
    if (m_window != kNoWindow && window == m_window)
        finish(take(property));
}

/// A long text comes in pieces, with another type at first. It is left where it is: the program that holds it notices that
/// the window goes.
std::optional<QString> XcbClipboardText::take(xcb_atom_t property) const
{
    if (property == XCB_ATOM_NONE)
        return std::nullopt;
    const auto asked = xcb_get_property(m_server.connection(), false, m_window, property, m_server.atom(XcbAtom::Utf8Text), 0,
                                        quint32(m_longest / kWord + 1));
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_server.connection(), asked, nullptr));
    if (!reply || reply->format != 8 || reply->type != m_server.atom(XcbAtom::Utf8Text) || reply->bytes_after > 0)
        return std::nullopt;
    const int length = xcb_get_property_value_length(reply.get());
    if (length > m_longest)
        return std::nullopt;
    return QString::fromUtf8(static_cast<const char *>(xcb_get_property_value(reply.get())), length);
}

void XcbClipboardText::finish(const std::optional<QString> &text)
{
    m_patience.reset();
    if (m_window != kNoWindow) {
        xcb_destroy_window(m_server.connection(), std::exchange(m_window, kNoWindow));
        xcb_flush(m_server.connection());
    }
    if (const auto done = std::exchange(m_done, {}))
        done(text);
}

} // namespace velto
