#pragma once

#include "Platform/Linux/X11/XcbServer.h"
#include "Platform/Timer.h"

#include <QObject>
#include <optional>

namespace velto {

class Clock;

/// Takes in the clipboard's text as an event, where the toolkit waits up to five seconds, in its own loop, for the program
/// that holds it. One reading at a time (ICCCM 2.4).
class XcbClipboardText final : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(std::optional<QString>)>;

    XcbClipboardText(XcbServer &server, Clock &clock, QObject *parent = nullptr);
    ~XcbClipboardText() override;

    /// `done` gets nothing after any failure; a reading that was under way ends that way. A text of more than `longest` bytes
    /// isn't fetched.
    void read(int longest, Done done);

private:
    void answered(xcb_window_t window, xcb_atom_t property);
    std::optional<QString> take(xcb_atom_t property) const;
    void finish(const std::optional<QString> &text);

    XcbServer &m_server;
    Clock &m_clock;
    xcb_window_t m_window = kNoWindow; ///< made for each reading: no answer to an older one can reach it
    int m_longest = 0;
    Done m_done;
    TimerHandle m_patience;
};

} // namespace velto
