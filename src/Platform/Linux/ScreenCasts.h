#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <utility>

namespace velto {

/// Whether another program receives the screen or a window through PipeWire, which is how the desktop's portal and Wayland
/// compositors share it, with a call in the browser as with a recorder. libpipewire is loaded once PipeWire runs, and reports
/// changes by itself. UI thread only; never waits for the media server.
class ScreenCasts final : public QObject {
    Q_OBJECT
public:
    explicit ScreenCasts(QObject *parent = nullptr);
    ~ScreenCasts() override;

    /// Connects to PipeWire if it has started since the last call; otherwise only checks its socket.
    void look();
    bool running() const;

Q_SIGNALS:
    void changed();

private:
    class Connection;
    /// Identifies the socket, so that one that nobody answers isn't tried again and again.
    using Socket = std::pair<quint64, qint64>;

    std::unique_ptr<Connection> m_connection;
    Socket m_tried;
};

} // namespace velto
