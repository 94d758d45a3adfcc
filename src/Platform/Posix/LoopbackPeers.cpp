#include "Platform/Posix/LoopbackPeers.h"

#include <utility>

namespace velto {

using Phase = LoopbackPeer::Phase;

LoopbackPeer &LoopbackPeers::add(Descriptor socket)
{
    if (m_free.empty()) {
        m_free.push_back(quint32(m_peers.size()));
        m_peers.emplace_back().place = m_free.back();
    }
    auto &peer = m_peers[m_free.back()];
    m_free.pop_back();
    peer.socket = std::move(socket);
    heard(peer);
    return peer;
}

LoopbackPeer *LoopbackPeers::find(LoopbackServer::ConnectionId id)
{
    const auto place = std::size_t(id & 0xffff'ffffU);
    if (place >= m_peers.size())
        return nullptr;
    auto &peer = m_peers[place];
    return peer.phase != Phase::Free && peer.id() == id ? &peer : nullptr;
}

LoopbackPeer *LoopbackPeers::mostSilent(const LoopbackPeer *except)
{
    LoopbackPeer *oldest = nullptr;
    for (auto &peer : m_peers) {
        if (peer.isBusy() && &peer != except && (!oldest || peer.lastHeard < oldest->lastHeard))
            oldest = &peer;
    }
    return oldest;
}

void LoopbackPeers::setPhase(LoopbackPeer &peer, Phase phase)
{
    const auto count = [this, &peer](int step) {
        m_waiting += peer.isWaiting() ? step : 0;
        m_halfClosed += peer.phase == Phase::HalfClosed ? step : 0;
        m_busy += peer.isBusy() ? step : 0;
    };
    count(-1);
    peer.phase = phase;
    count(1);
}

void LoopbackPeers::hold(LoopbackPeer &peer, qsizetype bytes)
{
    peer.held += bytes;
    m_held += bytes;
}

void LoopbackPeers::release(LoopbackPeer &peer)
{
    m_held -= std::exchange(peer.held, 0);
}

void LoopbackPeers::drop(LoopbackPeer &peer)
{
    release(peer);
    setPhase(peer, Phase::Free);
    const auto place = peer.place;
    const auto generation = peer.generation + 1;
    peer = LoopbackPeer();
    peer.place = place;
    peer.generation = generation;
    m_free.push_back(place);
}

} // namespace velto
