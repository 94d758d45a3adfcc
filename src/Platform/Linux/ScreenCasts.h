#pragma once

#include <QObject>
#include <memory>

namespace velto {

/// Whether another program receives the screen or a window through PipeWire, which is how the desktop's portal and Wayland
/// compositors share it, with a call in the browser as with a recorder. libpipewire is loaded once PipeWire runs, and reports
/// changes by itself. UI thread only; never waits for the media server.
class ScreenCasts final : public QObject {
    Q_OBJECT
public:
    explicit ScreenCasts(QObject *parent = nullptr);
    ~ScreenCasts() override;

    /// Connects to PipeWire if it runs and isn't connected to. Reports what is found by changed(), maybe before this returns.
    void look();
    bool running() const;

Q_SIGNALS:
    void changed();

private:
    class Connection;
    std::unique_ptr<Connection> m_connection;
};

} // namespace velto
