#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <utility>

namespace velto {

/// Whether another program is given the screen, or a window of it, through PipeWire: that is how the desktop's portal and the
/// Wayland compositors pass it on, to a call in the browser as to a recorder. libpipewire is loaded once PipeWire runs; what
/// comes and goes it tells by itself. UI thread only; never waits for the media server.
class ScreenCasts final : public QObject {
    Q_OBJECT
public:
    explicit ScreenCasts(QObject *parent = nullptr);
    ~ScreenCasts() override;

    /// Connects to PipeWire if it has come since the last time; otherwise it costs a look at its socket.
    void look();
    bool running() const;

Q_SIGNALS:
    void changed();

private:
    class Connection;
    /// Which socket it was, so that one that nobody answers isn't tried again and again.
    using Socket = std::pair<quint64, qint64>;

    std::unique_ptr<Connection> m_connection;
    Socket m_tried;
};

} // namespace velto
