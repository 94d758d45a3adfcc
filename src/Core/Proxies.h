#pragma once

#include <QNetworkProxy>
#include <QObject>
#include <QUrl>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>

namespace velto {

class Background;

/// The proxies that the desktop wants a request to go through. Finding out may load a script from the network, from a server that
/// never answers, inside the toolkit: so it is done in the background, one at a time. UI thread.
class Proxies final : public QObject {
    Q_OBJECT
public:
    using Find = std::function<QList<QNetworkProxy>(const QNetworkProxyQuery &)>;
    using Done = std::function<void(std::optional<QList<QNetworkProxy>>)>;

    explicit Proxies(Background &background, Find find = &QNetworkProxyFactory::systemProxyForQuery);
    /// Answers all that are still waiting with nothing.
    ~Proxies() override;

    /// `done` runs once: with the proxies in the order in which they are to be tried, or with nothing after the limit.
    void find(const QUrl &url, std::chrono::milliseconds limit, Done done);

private:
    struct Waiting {
        int id;
        QUrl url;
        Done done;
    };
    void next();
    void answer(int id, const std::optional<QList<QNetworkProxy>> &proxies);

    Background &m_background;
    Find m_find;
    std::deque<Waiting> m_waiting;
    int m_lastId = 0;
    bool m_underWay = false;
};

} // namespace velto
