#include "Tabs/Agents/SessionWatch.h"

#include "Platform/Background.h"
#include "Platform/Clock.h"

namespace velto {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{500};

} // namespace

SessionWatch::SessionWatch(Clock &clock, Background &background, SessionNotes notes, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_background(background)
    , m_notes(std::make_shared<SessionNotes>(std::move(notes)))
{
}

void SessionWatch::setWanted(bool wanted)
{
    m_wanted = wanted;
    if (!wanted)
        m_next.reset();
    else if (!m_looking && !m_next)
        look();
}

void SessionWatch::look()
{
    m_looking = true;
    m_next.reset();
    inBackground(
        m_background, this, [notes = m_notes] { return notes->read(); },
        [this](const QList<SessionStatus> &sessions) {
            m_looking = false;
            if (m_wanted)
                m_next = m_clock.after(kBetweenLooks, [this] { look(); });
            Q_EMIT seen(sessions);
        });
}

} // namespace velto
