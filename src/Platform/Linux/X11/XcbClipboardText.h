#pragma once

#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/Timer.h"

#include <QObject>
#include <map>
#include <optional>

namespace velto {

class Clock;

/// Takes in the clipboard's text as an event, where the toolkit waits up to five seconds, in its own loop, for the program
/// that holds it (ICCCM 2.4 and 2.7). Asks first in what kinds it can be had, and for the text only if there is one and no
/// password manager says that it is a secret. What an owner has begun to hand over is taken in to its end, since some lose the
/// text or end when the window that asked for it goes; what is too long is dropped on the way.
class XcbClipboardText final : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(std::optional<QString>)>;

    XcbClipboardText(XcbServer &server, Clock &clock, QObject *parent = nullptr);
    ~XcbClipboardText() override;

    /// `done` gets nothing after any failure, for a text of more than `longest` bytes, and if another reading begins. After five
    /// seconds of silence it gets nothing as well, and the text should that come after all.
    void read(int longest, Done done);

private:
    enum class Stage : quint8 { Kinds, Text, Pieces };
    /// One reading, in a window of its own: no answer to another reaches it. Outlives its question until the owner has answered
    /// or is gone.
    struct Transfer {
        xcb_window_t owner = kNoWindow;
        Stage stage = Stage::Kinds;
        xcb_atom_t kind = XCB_ATOM_NONE;
        int longest = 0;
        bool unusable = false; ///< too long, refused or of another kind
        QByteArray text;
    };
    using Transfers = std::map<xcb_window_t, Transfer>;

    void answered(xcb_window_t window, xcb_atom_t property);
    void ownerGone(xcb_window_t owner);
    void ask(xcb_window_t window, xcb_atom_t kind) const;
    void askForText(Transfers::iterator transfer, xcb_atom_t kinds);
    void takePiece(xcb_window_t window);
    /// Adds the property's content; its type and its whole length in bytes, or nothing.
    struct Taken {
        xcb_atom_t type;
        quint32 length;
    };
    std::optional<Taken> take(Transfers::iterator transfer) const;
    void finish(Transfers::iterator transfer);
    void tell(const std::optional<QString> &text);

    XcbServer &m_server;
    Clock &m_clock;
    Transfers m_transfers;
    xcb_window_t m_asked = kNoWindow; ///< the transfer that someone waits for
    Done m_done;
    TimerHandle m_patience;
};

} // namespace velto
