#include "Hooks/HookListener.h"

#include "Hooks/HookRequest.h"
#include "Hooks/Hooks.h"
#include "Platform/Clock.h"
#include "Platform/Defaults.h"
#include "Platform/LoopbackServer.h"

#include <QPointer>
#include <mutex>
#include <unordered_set>
#include <vector>

namespace velto {

namespace {

/// Questions that may wait for an answer at the same time; any more go back to their terminal at once.
constexpr std::size_t kMaxQuestions = 128;
/// Bytes of request bodies that may pile up while the UI thread is busy; events beyond that are lost.
constexpr qsizetype kMaxPending = 4'194'304;
/// What an event costs besides its body, in bytes.
constexpr qsizetype kEventCost = 1024;

} // namespace

/// What the server's thread and the UI thread share. It outlives the listener for as long as a connection or a reply holds it.
class HookListener::Link {
public:
    struct Arrival {
        HookEvent event;
        std::optional<LoopbackServer::ConnectionId> question;
    };

    Link(HookListener *listener, LoopbackServer *server)
        : m_listener(listener)
        , m_server(server)
    {
    }

    /// Server's thread. False if nobody will take it.
    bool push(Arrival arrival, qsizetype bodySize)
    {
        const std::scoped_lock lock(m_mutex);
        const auto cost = bodySize + kEventCost;
        if (!m_listener || m_pendingCost + cost > kMaxPending || (arrival.question && m_open.size() >= kMaxQuestions))
            return false;
        if (arrival.question)
            m_open.insert(*arrival.question);
        m_pendingCost += cost;
        m_pending.push_back(std::move(arrival));
        wake();
        return true;
    }

    /// Server's thread: the connection is over.
    void forget(LoopbackServer::ConnectionId question)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_open.erase(question) == 0 || !m_listener)
            return;
        // A question that leaves before it was delivered is known to nobody.
        if (std::erase_if(m_pending, [question](const Arrival &arrival) { return arrival.question == question; }) == 0) {
            m_withdrawn.push_back(question);
            wake();
        }
    }

    /// Server's thread: a call without an event.
    void knock()
    {
        const std::scoped_lock lock(m_mutex);
        m_knocked = true;
        if (m_listener)
            wake();
    }

    struct News {
        std::vector<Arrival> arrivals;
        std::vector<LoopbackServer::ConnectionId> withdrawn;
        bool knocked = false;
    };
    /// UI thread: everything since the last call.
    News take()
    {
        const std::scoped_lock lock(m_mutex);
        m_pendingCost = 0;
        m_woken = false;
        return {std::exchange(m_pending, {}), std::exchange(m_withdrawn, {}), std::exchange(m_knocked, false)};
    }

    /// UI thread. False if the asker is gone, or has been answered.
    bool answer(LoopbackServer::ConnectionId question, std::optional<bool> decision)
    {
        {
            const std::scoped_lock lock(m_mutex);
            if (m_open.erase(question) == 0)
                return false;
        }
        m_server->reply(question, permissionReply(decision));
        return true;
    }

    /// UI thread: leaves every question to its terminal, and takes no more.
    void close()
    {
        std::unordered_set<LoopbackServer::ConnectionId> open;
        {
            const std::scoped_lock lock(m_mutex);
            m_listener = nullptr;
            m_pending.clear();
            m_withdrawn.clear();
            open.swap(m_open);
        }
        for (const auto question : open)
            m_server->reply(question, permissionReply(std::nullopt));
    }

    QByteArray token; ///< set before the server starts

private:
    /// One queued call delivers all that arrives before it runs. The caller holds the lock, which keeps the listener alive.
    void wake()
    {
        if (!std::exchange(m_woken, true))
            Q_EMIT m_listener->arrived(QPrivateSignal());
    }

    std::mutex m_mutex;
    HookListener *m_listener; ///< null once it is going
    LoopbackServer *m_server; ///< for the UI thread, while something is open
    std::vector<Arrival> m_pending;
    qsizetype m_pendingCost = 0;
    std::vector<LoopbackServer::ConnectionId> m_withdrawn;
    bool m_knocked = false;
    bool m_woken = false; ///< a call is under way
    std::unordered_set<LoopbackServer::ConnectionId> m_open; ///< asked and not yet answered
};

/// One hook call. Lives on the server's thread.
class HookListener::Connection final : public LoopbackConnection {
public:
    Connection(std::shared_ptr<Link> link, LoopbackServer::ConnectionId id)
        : m_link(std::move(link))
        , m_id(id)
        , m_request(m_link->token)
    {
    }
    ~Connection() override
    {
        if (m_asked)
            m_link->forget(m_id);
    }

    Want received(QByteArrayView bytes, bool finished, QByteArray &reply) override
    {
        switch (m_request.feed(bytes, finished)) {
        case HookRequest::State::More:
            return Want::Read;
        case HookRequest::State::Broken:
            return Want::Close;
        case HookRequest::State::Refused:
            reply = hookReply("403 Forbidden");
            return Want::Linger;
        case HookRequest::State::TooLarge:
            reply = hookReply("413 Payload Too Large");
            return Want::Linger;
        case HookRequest::State::Complete:
            break;
        }
        if (m_request.path() == HookRequest::Path::Permission && ask())
            return Want::Wait;
        reply = hookReply("204 No Content");
        return m_request.mayHaveMore() ? Want::Linger : Want::Close;
    }

    void replied() override
    {
        const auto body = m_request.body();
        if (m_request.state() != HookRequest::State::Complete || m_request.path() != HookRequest::Path::Event)
            return;
        if (auto event = HookEvent::parse(body, {}))
            m_link->push({std::move(*event), std::nullopt}, body.size());
        else
            m_link->knock();
        m_request.release();
    }

private:
    bool ask()
    {
        auto event = HookEvent::parse(m_request.body(), {});
        m_asked = event && m_link->push({std::move(*event), m_id}, m_request.body().size());
        if (m_asked)
            m_request.release();
        return m_asked;
    }

    std::shared_ptr<Link> m_link;
    LoopbackServer::ConnectionId m_id;
    HookRequest m_request;
    bool m_asked = false;
};

/// The right to answer once. Dropped without an answer, it leaves the decision to the terminal.
class HookListener::Question {
public:
    Question(std::weak_ptr<Link> link, LoopbackServer::ConnectionId id)
        : m_link(std::move(link))
        , m_id(id)
    {
    }
    Question(const Question &) = delete;
    Question &operator=(const Question &) = delete;
    ~Question() { answer(std::nullopt); }

    bool answer(std::optional<bool> decision)
    {
        const auto link = std::exchange(m_link, {}).lock();
        return link && link->answer(m_id, decision);
    }

private:
    std::weak_ptr<Link> m_link;
    LoopbackServer::ConnectionId m_id;
};

HookListener::HookListener(Defaults &defaults, std::unique_ptr<LoopbackServer> server, Clock &clock, quint16 port,
                           QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_clock(clock)
    , m_wantedPort(port)
    , m_link(std::make_shared<Link>(this, server.get()))
    , m_server(std::move(server))
{
    connect(this, &HookListener::arrived, this, &HookListener::deliver, Qt::QueuedConnection);
}

HookListener::~HookListener()
{
    m_link->close();
    m_server.reset();
}

void HookListener::start()
{
    if (m_running)
        return;
    m_link->token = hookToken(m_defaults).toUtf8();
    m_running = m_server->listen(
        m_wantedPort, [link = m_link](LoopbackServer::ConnectionId id) { return std::make_unique<Connection>(link, id); });
    if (m_running)
        Q_EMIT runningChanged();
}

quint16 HookListener::port() const
{
    return m_server->port();
}

void HookListener::deliver()
{
    const QPointer<HookListener> self(this);
    auto news = m_link->take();
    if (!news.arrivals.empty() || news.knocked)
        Q_EMIT called();
    if (!self)
        return;
    for (auto &[event, question] : news.arrivals) {
        event.at = m_clock.wallTime();
        if (question) {
            const auto reply = std::make_shared<Question>(m_link, *question);
            Q_EMIT asked(event, *question, [reply](std::optional<bool> decision) { return reply->answer(decision); });
        } else {
            Q_EMIT told(event);
        }
        if (!self)
            return;
    }
    for (const auto question : news.withdrawn) {
        Q_EMIT withdrawn(question);
        if (!self)
            return;
    }
}

} // namespace velto

// Not with the other classes' moc files, so that a program which only listens links nothing else.
#include "moc_HookListener.cpp" // NOLINT(bugprone-suspicious-include)
