#include "Core/Proxies.h"

#include "Platform/Background.h"

#include <QTimer>
#include <algorithm>
#include <utility>

namespace velto {

Proxies::Proxies(Background &background, Find find)
    : m_background(background)
    , m_find(std::move(find))
{
}

Proxies::~Proxies()
{
    while (!m_waiting.empty())
        answer(m_waiting.front().id, std::nullopt);
}

void Proxies::find(const QUrl &url, std::chrono::milliseconds limit, Done done)
{
    const int id = ++m_lastId;
    m_waiting.push_back({id, url, std::move(done)});
    QTimer::singleShot(limit, this, [this, id] { answer(id, std::nullopt); });
    next();
}

void Proxies::next()
{
    if (m_underWay || m_waiting.empty())
        return;
    m_underWay = true;
    const int id = m_waiting.front().id;
    inBackground(
        m_background, this, [find = m_find, url = m_waiting.front().url] { return find(QNetworkProxyQuery(url)); },
        [this, id](const QList<QNetworkProxy> &proxies) {
            m_underWay = false;
            answer(id, proxies);
            next();
        });
}

void Proxies::answer(int id, const std::optional<QList<QNetworkProxy>> &proxies)
{
    const auto found = std::ranges::find(m_waiting, id, &Waiting::id);
    if (found == m_waiting.end())
        return;
    const Done done = std::move(found->done);
    m_waiting.erase(found);
    done(proxies);
}

} // namespace velto
