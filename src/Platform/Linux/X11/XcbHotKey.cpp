#include "Platform/Linux/X11/XcbHotKey.h"

#include "Platform/Linux/X11/LockModifiers.h"

#include <xcb/xcb_keysyms.h>

namespace velto {

namespace {

constexpr xcb_keysym_t kLetterN = 0x6e; // XK_n
// N's position in the kernel's key codes, for keyboard maps without a Latin letter.
constexpr xcb_keycode_t kPositionOfN = 57;
// Milliseconds. A held key repeats faster than this; a press after a longer pause is a new one, whose release was lost.
constexpr quint32 kLongestRepeat = 2000;

using KeySymbols = std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)>;

QList<xcb_keycode_t> codesOfN(xcb_key_symbols_t *symbols)
{
    QList<xcb_keycode_t> codes;
    const XcbReply<xcb_keycode_t> found(xcb_key_symbols_get_keycode(symbols, kLetterN));
    for (const auto *code = found.get(); code && *code != XCB_NO_SYMBOL; ++code)
        codes.append(*code);
    return codes.isEmpty() ? QList<xcb_keycode_t>{kPositionOfN} : codes;
}

ModifierSymbols modifierSymbols(xcb_connection_t *connection, xcb_key_symbols_t *symbols)
{
    ModifierSymbols result;
    const XcbReply<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!map)
        return result;
    const auto *codes = xcb_get_modifier_mapping_keycodes(map.get());
    for (std::size_t i = 0; i < result.size(); ++i)
        for (int j = 0; j < map->keycodes_per_modifier; ++j)
            // The symbol may be on another level or group of a key than its first.
            for (int column = 0; column < 4; ++column)
                if (const auto code = codes[i * map->keycodes_per_modifier + std::size_t(j)])
                    result[i].push_back(xcb_key_symbols_get_keysym(symbols, code, column));
    return result;
}

} // namespace

XcbHotKey::XcbHotKey(XcbServer &server, QObject *parent)
    : HotKey(parent)
    , m_server(server)
{
    connect(&m_server, &XcbServer::keyChanged, this, &XcbHotKey::keyChanged);
    connect(&m_server, &XcbServer::keyboardChanged, this, &XcbHotKey::regrabSoon);
}

XcbHotKey::~XcbHotKey()
{
    release();
}

bool XcbHotKey::registerHotKey(std::function<void()> action)
{
    if (!m_server.exists())
        return false;
    release();
    m_action = std::move(action);
    if (grab(keysNow()))
        return true;
    m_action = nullptr;
    return false;
}

Support XcbHotKey::support() const
{
    return m_grabbed.codes.isEmpty() ? Support{Support::State::Denied, {}} : Support{};
}

XcbHotKey::Keys XcbHotKey::keysNow() const
{
    // Interning an atom also makes the server's extensions known; without that, a new keyboard would go unnoticed.
    m_server.atom(XcbAtom::ActiveWindow);
    const KeySymbols symbols(xcb_key_symbols_alloc(m_server.connection()), &xcb_key_symbols_free);
    if (!symbols)
        return {};
    const auto map = modifierSymbols(m_server.connection(), symbols.get());
    Keys keys;
    keys.codes = codesOfN(symbols.get());
    for (const auto locks : lockCombinations(lockModifiers(map)))
        keys.modifiers.append(quint16(XCB_MOD_MASK_CONTROL | altModifier(map) | locks));
    return keys;
}

/// All or nothing: with only some of the grabs, the key would depend on the state of Num Lock.
bool XcbHotKey::grab(const Keys &keys)
{
    auto *connection = m_server.connection();
    std::vector<xcb_void_cookie_t> requests;
    for (const auto code : keys.codes)
        for (const auto modifiers : keys.modifiers)
            requests.push_back(
                xcb_grab_key_checked(connection, 0, m_server.root(), modifiers, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool granted = !requests.empty();
    for (const auto request : requests) {
        const XcbReply<xcb_generic_error_t> refusal(xcb_request_check(connection, request));
        granted = granted && !refusal;
    }
    m_grabbed = keys;
    if (!granted)
        release();
    Q_EMIT changed();
    return granted;
}

void XcbHotKey::release()
{
    for (const auto code : std::as_const(m_grabbed.codes))
        for (const auto modifiers : std::as_const(m_grabbed.modifiers))
            xcb_ungrab_key(m_server.connection(), code, m_server.root(), modifiers);
    if (!m_grabbed.codes.isEmpty())
        xcb_flush(m_server.connection());
    m_grabbed = {};
    m_down = false;
}

/// One change of the layout sends several events, and a program that types for the user changes the map all the time.
void XcbHotKey::regrabSoon()
{
    if (!m_action || m_regrabPending)
        return;
    m_regrabPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_regrabPending = false;
            const auto keys = keysNow();
            if (keys == m_grabbed)
                return;
            release();
            grab(keys);
        },
        Qt::QueuedConnection);
}

void XcbHotKey::keyChanged(bool pressed, xcb_keycode_t key, quint32 time)
{
    if (!m_action || !m_grabbed.codes.contains(key))
        return;
    // A repeat is another press, or a release and a press with the same timestamp.
    const bool repeats = m_down ? time - m_lastEvent < kLongestRepeat : m_lastEvent != 0 && time == m_lastEvent;
    m_down = pressed;
    m_lastEvent = time;
    if (pressed && !repeats)
        QMetaObject::invokeMethod(
            this, [this] { m_action(); }, Qt::QueuedConnection);
}

} // namespace velto
