#pragma once

#include "Platform/Timer.h"
#include "Tabs/Agents/SessionNotes.h"

#include <QObject>
#include <memory>

namespace velto {

class Background;
class Clock;

/// Follows what the sessions do, as long as somebody wants to know. UI thread only; reads in the background.
class SessionWatch : public QObject {
    Q_OBJECT
public:
    SessionWatch(Clock &clock, Background &background, SessionNotes notes, QObject *parent = nullptr);

    void setWanted(bool wanted);

Q_SIGNALS:
    void seen(const QList<velto::SessionStatus> &sessions);

private:
    void look();

    Clock &m_clock;
    Background &m_background;
    std::shared_ptr<SessionNotes> m_notes;
    bool m_wanted = false;
    bool m_looking = false;
    TimerHandle m_next;
};

} // namespace velto
