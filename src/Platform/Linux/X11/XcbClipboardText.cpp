#include "Platform/Linux/X11/XcbClipboardText.h"

#include "Platform/Clock.h"

#include <algorithm>
#include <utility>

namespace velto {

namespace {

constexpr std::chrono::seconds kPatience{5};
constexpr quint32 kWord = 4; // the unit of a property's length

} // namespace

XcbClipboardText::XcbClipboardText(XcbServer &server, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_clock(clock)
{
    connect(&m_server, &XcbServer::selectionCame, this, &XcbClipboardText::answered);
    connect(&m_server, &XcbServer::pieceCame, this, &XcbClipboardText::takePiece);
    connect(&m_server, &XcbServer::windowGone, this, &XcbClipboardText::ownerGone);
}

XcbClipboardText::~XcbClipboardText()
{
    for (const auto &transfer : m_transfers)
        xcb_destroy_window(m_server.connection(), transfer.first);
}

void XcbClipboardText::read(int longest, Done done)
{
    tell(std::nullopt);
    m_done = std::move(done);
    const xcb_window_t owner = m_server.selectionOwner(m_server.atom(XcbAtom::Clipboard));
    if (owner == kNoWindow)
        return tell(std::nullopt);
    // To be notified if the owner is destroyed.
    m_server.select(owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY);

    auto *connection = m_server.connection();
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    m_asked = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_asked, m_server.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    Transfer &transfer = m_transfers[m_asked];
    transfer.owner = owner;
    transfer.longest = longest;
    ask(m_asked, m_server.atom(XcbAtom::Targets));
    m_patience = m_clock.after(kPatience, [this] {
        if (m_done)
            m_done(std::nullopt);
    });
}

void XcbClipboardText::ask(xcb_window_t window, xcb_atom_t kind) const
{
    xcb_convert_selection(m_server.connection(), window, m_server.atom(XcbAtom::Clipboard), kind,
                          m_server.atom(XcbAtom::Transfer), XCB_CURRENT_TIME);
    xcb_flush(m_server.connection());
}

void XcbClipboardText::answered(xcb_window_t window, xcb_atom_t property)
{
    const auto transfer = m_transfers.find(window);
    if (transfer == m_transfers.end())
        return;
    Transfer &facts = transfer->second;
    switch (facts.stage) {
    case Stage::Kinds:
        return askForText(transfer, property);
    case Stage::Text: {
        const auto taken = property == XCB_ATOM_NONE ? std::nullopt : take(transfer);
        if (taken && taken->type == m_server.atom(XcbAtom::Incremental)) {
            facts.stage = Stage::Pieces;
            facts.text.clear();
            facts.unusable = false;
            return;
        }
        facts.unusable = facts.unusable || !taken || taken->type != facts.kind;
        return finish(transfer);
    }
    case Stage::Pieces:
        return;
    }
}

void XcbClipboardText::askForText(Transfers::iterator transfer, xcb_atom_t kinds)
{
    const auto offered = kinds == XCB_ATOM_NONE ? std::vector<quint32>{} : m_server.values(transfer->first, kinds);
    const auto offers = [&offered](xcb_atom_t kind) { return std::ranges::find(offered, kind) != offered.end(); };
    Transfer &facts = transfer->second;
    // An owner that doesn't say what it offers is asked for UTF-8.
    if (offered.empty() || offers(m_server.atom(XcbAtom::Utf8Text)))
        facts.kind = m_server.atom(XcbAtom::Utf8Text);
    else if (offers(XCB_ATOM_STRING))
        facts.kind = XCB_ATOM_STRING;
    const bool superseded = transfer->first != m_asked;
    if (superseded || facts.kind == XCB_ATOM_NONE || offers(m_server.atom(XcbAtom::PasswordHint))) {
        facts.unusable = true;
        return finish(transfer);
    }
    facts.stage = Stage::Text;
    ask(transfer->first, facts.kind);
}

void XcbClipboardText::takePiece(xcb_window_t window)
{
    const auto transfer = m_transfers.find(window);
    if (transfer == m_transfers.end() || transfer->second.stage != Stage::Pieces)
        return;
    const auto taken = take(transfer);
    if (!taken || taken->length == 0)
        finish(transfer);
}

/// Deleting the property tells the owner to put the next piece there.
std::optional<XcbClipboardText::Taken> XcbClipboardText::take(Transfers::iterator transfer) const
{
    auto &[window, facts] = *transfer;
    auto *connection = m_server.connection();
    const xcb_atom_t property = m_server.atom(XcbAtom::Transfer);
    const auto asked = xcb_get_property(connection, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                        facts.unusable ? 0 : quint32(facts.longest) / kWord + 1);
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, asked, nullptr));
    xcb_delete_property(connection, window, property);
    xcb_flush(connection);
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    const auto length = quint32(xcb_get_property_value_length(reply.get()));
    if (reply->format == 8)
        facts.text.append(static_cast<const char *>(xcb_get_property_value(reply.get())), length);
    if (reply->bytes_after > 0 || facts.text.size() > facts.longest) {
        facts.unusable = true;
        facts.text.clear();
    }
    return Taken{reply->type, length + reply->bytes_after};
}

void XcbClipboardText::ownerGone(xcb_window_t owner)
{
    for (auto transfer = m_transfers.begin(); transfer != m_transfers.end();) {
        const auto each = transfer++;
        if (each->second.owner != owner)
            continue;
        each->second.unusable = true;
        finish(each);
    }
}

void XcbClipboardText::finish(Transfers::iterator transfer)
{
    const auto [window, facts] = *transfer;
    m_transfers.erase(transfer);
    xcb_destroy_window(m_server.connection(), window);
    xcb_flush(m_server.connection());
    if (window != m_asked)
        return;
    if (facts.unusable)
        tell(std::nullopt);
    else
        tell(facts.kind == XCB_ATOM_STRING ? QString::fromLatin1(facts.text) : QString::fromUtf8(facts.text));
}

void XcbClipboardText::tell(const std::optional<QString> &text)
{
    m_patience.reset();
    m_asked = kNoWindow;
    if (const auto done = std::exchange(m_done, {}))
        done(text);
}

} // namespace velto
