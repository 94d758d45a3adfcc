#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QObject>
#include <array>
#include <cstdlib>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace velto {

constexpr xcb_window_t kNoWindow = XCB_NONE;

struct XcbFree {
    void operator()(void *memory) const { std::free(memory); } // NOLINT(cppcoreguidelines-no-malloc): libxcb's own is malloc
};
/// A reply of the X server; null if it answered with an error.
template <typename Reply> using XcbReply = std::unique_ptr<Reply, XcbFree>;

/// The atoms of the window manager's conventions (Extended Window Manager Hints, ICCCM, XEmbed tray, KWin).
enum class XcbAtom : quint8 {
    ActiveWindow,
    ClientList,
    ClientListStacking,
    WorkArea,
    StrutPartial,
    CompositingManager, ///< the selection that a compositor owns, one for each screen
    SystemTray, ///< the selection that a tray of the older kind owns, one for each screen
    Manager,
    BlurBehind,
    CompositorShadow,
    Clipboard,
    Utf8Text,
    Targets, ///< the kinds in which a selection can be had
    Incremental, ///< the kind of a selection that comes piece by piece
    PasswordHint, ///< a kind that password managers offer beside a secret
    WindowState,
    SkipTaskbar,
    SkipPager,
    Transfer, ///< the property in which this program takes a selection in
    Count
};

/// The toolkit's own connection to the X server, and the events on it that the toolkit keeps to itself.
/// Without X11 (another platform plugin) every answer is empty. UI thread only.
class XcbServer final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// Needs the application object. Waits for nothing.
    explicit XcbServer(QObject *parent = nullptr);
    ~XcbServer() override;

    /// Whether there is an X server at all.
    bool exists() const { return m_connection != nullptr; }
    xcb_connection_t *connection() const { return m_connection; }
    xcb_window_t root() const { return m_root; }
    xcb_atom_t atom(XcbAtom name) const;

    /// A property's 32-bit values, at most 4096 of them; empty if it is missing or of another kind.
    std::vector<quint32> values(xcb_window_t window, xcb_atom_t property) const;
    /// Adds to the events that this connection gets from a window.
    void select(xcb_window_t window, quint32 events) const;
    /// Whether the window exists and can have the keyboard.
    bool viewable(xcb_window_t window) const;
    xcb_window_t selectionOwner(xcb_atom_t selection) const;
    /// Makes selectionOwnerChanged() report that selection.
    void followSelection(xcb_atom_t selection) const;
    /// Makes buttonPressed() report every button press on the screen, whoever gets it. False without the input extension 2.1.
    bool watchButtons(bool on);

Q_SIGNALS:
    void rootPropertyChanged(xcb_atom_t property);
    /// A window of another program has a new WM_CLASS. Only for windows that were selected for property changes.
    void classChanged(xcb_window_t window);
    void selectionOwnerChanged(xcb_atom_t selection);
    /// A selection that a window asked for has come, in that property of the window, or is refused, with no property.
    void selectionCame(xcb_window_t window, xcb_atom_t property);
    /// The Transfer property of that window has a new value.
    void pieceCame(xcb_window_t window);
    /// A window is gone. Only for windows that were selected for changes of their structure.
    void windowGone(xcb_window_t window);
    /// A window got covered, in whole or in part.
    void obscured(xcb_window_t window);
    /// A grabbed key on the root window; repeats come as presses. `time` is the server's, in milliseconds.
    void keyChanged(bool pressed, xcb_keycode_t key, quint32 time);
    /// The keyboard's keys or modifiers have changed.
    void keyboardChanged();
    void buttonPressed();

private:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    bool handle(const xcb_generic_event_t &event);
    void handleGeneric(const xcb_ge_generic_event_t &event);
    /// Fetches the answers to what the constructor asked.
    void collect() const;

    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = kNoWindow;
    int m_screen = 0;
    std::array<xcb_intern_atom_cookie_t, std::size_t(XcbAtom::Count)> m_asked{};
    xcb_query_extension_cookie_t m_keyboardAsked{};
    mutable bool m_collected = false;
    mutable std::array<xcb_atom_t, std::size_t(XcbAtom::Count)> m_atoms{};
    mutable quint8 m_fixesEvent = 0; ///< 0 for an extension that isn't there
    mutable quint8 m_keyboardEvent = 0;
    mutable quint8 m_inputOpcode = 0;
};

} // namespace velto
