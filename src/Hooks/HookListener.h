#pragma once

#include "Hooks/HookEvent.h"

#include <QObject>
#include <functional>
#include <memory>

namespace velto {

class Clock;
class Defaults;
class LoopbackServer;

/// Hears the hook calls of Claude Code on 127.0.0.1:4747 and carries them to the UI thread. Any local process can reach that
/// port, so nothing is taken without the secret, and whatever looks like a browser is refused. Failures are silent:
/// `running` stays false and hooks are simply not heard. UI thread.
class HookListener : public QObject {
    Q_OBJECT
public:
    static constexpr quint16 kPort = 4747;
    /// Identifies a question while its asker waits; never reused.
    using QuestionId = quint64;
    /// Returns false if the asker no longer waits.
    using Reply = std::function<bool(std::optional<bool>)>;

    /// `port` is for tests; 0 lets the system choose.
    HookListener(Defaults &defaults, std::unique_ptr<LoopbackServer> server, Clock &clock, quint16 port = kPort,
                 QObject *parent = nullptr);
    ~HookListener() override;

    /// May be called again if the port was taken.
    void start();
    bool running() const { return m_running; }
    quint16 port() const;
    quint16 wantedPort() const { return m_wantedPort; }

Q_SIGNALS:
    // On the UI thread. A slot may destroy the listener, which then answers the open questions.
    /// An event that nobody waits for.
    void told(const velto::HookEvent &event);
    /// A question: the sender waits until the reply is called, with an answer or with nothing. Only the first call counts, and
    /// a reply that is dropped uncalled means no decision. It may be called after the listener is gone.
    void asked(const velto::HookEvent &event, velto::HookListener::QuestionId id, const velto::HookListener::Reply &reply);
    /// The asker of a question that has no reply yet is gone.
    void withdrawn(velto::HookListener::QuestionId id);
    /// A call with the right secret has come, whatever it says; once for all that come together.
    void called();
    void runningChanged();
    /// On the server's thread: something waits to be delivered.
    void arrived(QPrivateSignal);

private:
    class Link;
    class Connection;
    class Question;

    void deliver();

    Defaults &m_defaults;
    Clock &m_clock;
    quint16 m_wantedPort;
    std::shared_ptr<Link> m_link;
    std::unique_ptr<LoopbackServer> m_server;
    bool m_running = false;
};

} // namespace velto
