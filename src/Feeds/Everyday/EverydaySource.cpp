#include "Feeds/Everyday/EverydaySource.h"

#include "Core/Peek.h"
#include "Core/Prefs.h"
#include "Feeds/Calendar/MeetingFeed.h"
#include "Platform/Clock.h"
#include "Platform/Sounds.h"

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kTick{15};
/// A player that moves to its next track signals several times.
constexpr std::chrono::milliseconds kBurst{100};
constexpr qint64 kWarnsFrom = 300'000;
constexpr qint64 kWarnsUntil = -60'000;

bool isToday(const QDateTime &moment, const QDateTime &now)
{
    return moment.toLocalTime().date() == now.toLocalTime().date();
}

} // namespace

EverydaySource::EverydaySource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
    connect(&m_needs.players, &MediaPlayers::changed, this, [this] {
        if (!m_mediaSoon && m_needs.prefs.isOn(Prefs::Module::Media))
            m_mediaSoon = m_needs.clock.after(kBurst, [this] {
                m_mediaSoon.reset();
                loadMedia();
            });
    });
}

EverydaySource::~EverydaySource() = default;

void EverydaySource::refresh()
{
    if (m_needs.prefs.isOn(Prefs::Module::Calendar)) {
        if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google)
            m_needs.meetings.refresh();
        loadCalendar();
    }
    if (m_needs.prefs.isOn(Prefs::Module::Media))
        loadMedia();
}

void EverydaySource::tick()
{
    if (m_needs.prefs.isOn(Prefs::Module::Calendar) && m_calendarState == SourceState::ready()) {
        loadCalendar();
        warn();
    }
    if (m_needs.prefs.isOn(Prefs::Module::Media))
        loadMedia();
    endFocus();
    publish();
}

void EverydaySource::loadCalendar()
{
    const QDateTime now = m_needs.clock.wallTime();
    if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Manual)
        loadTypedIn(now);
    else
        loadFeed(now);
    publish();
}

void EverydaySource::loadTypedIn(const QDateTime &now)
{
    const Prefs &prefs = m_needs.prefs;
    m_nextEvent = NextEvent::typedIn(prefs.meetingTitle(), prefs.meetingStart(), prefs.meetingURL(), now);
    m_leftToday = m_nextEvent && isToday(m_nextEvent->start, now) ? 1 : 0;
    m_calendarState = m_nextEvent ? SourceState::ready()
                                  : SourceState::unavailable(tr("No meeting added."), tr("Add one yourself in the Connect tab."));
}

void EverydaySource::loadFeed(const QDateTime &now)
{
    const QList<GoogleMeeting> &meetings = m_needs.meetings.meetings();
    m_leftToday =
        int(std::ranges::count_if(meetings, [&now](const GoogleMeeting &meeting) { return isToday(meeting.start, now); }));
    if (!meetings.isEmpty()) {
        m_nextEvent = NextEvent::from(meetings.front());
        m_calendarState = SourceState::ready();
        return;
    }
    m_nextEvent.reset();
    if (m_needs.meetings.locked()) {
        m_calendarState = SourceState::locked(tr("The keyring is locked."), tr("Unlock it to see your meetings."));
        return;
    }
    // Connected, with nothing in the next day: nothing to say, as while the first reading is under way.
    m_calendarState = m_needs.meetings.linked()
        ? SourceState::loading()
        : SourceState::unavailable(tr("Google Calendar is not connected."), tr("Connect it in the Connect tab."));
}

void EverydaySource::unlock()
{
    m_needs.meetings.unlock();
}

SourceState EverydaySource::calendarToShow() const
{
    const bool read = m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google && m_needs.meetings.answered();
    if (m_calendarState != SourceState::loading() || !read)
        return m_calendarState;
    const std::optional<QString> error = m_needs.meetings.error();
    return error ? SourceState::failed(*error + u'.') : SourceState::ready();
}

/// Several meetings may start at the same time.
void EverydaySource::warn()
{
    if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google) {
        for (const GoogleMeeting &meeting : m_needs.meetings.meetings())
            warnOf(NextEvent::from(meeting));
    } else if (m_nextEvent) {
        warnOf(*m_nextEvent);
    }
}

void EverydaySource::warnOf(const NextEvent &event)
{
    const QDateTime now = m_needs.clock.wallTime();
    const qint64 left = now.msecsTo(event.start);
    if (left >= kWarnsFrom || left <= kWarnsUntil || m_peekedEvents.contains(event.id))
        return;
    m_peekedEvents.insert(event.id);
    const int waiting = waitingAgents();
    QString text = event.title + u' ' + event.relative(now);
    if (waiting == 1)
        text += tr(" · 1 agent still waits on you");
    else if (waiting != 0)
        text += tr(" · %1 agents still wait on you").arg(waiting);
    Q_EMIT peekWanted({.symbol = u"calendar"_s,
                       .text = text,
                       .tone = Peek::Tone::Warn,
                       .tab = Tab::Home,
                       .resume = {},
                       .cwd = {},
                       .url = event.joinURL,
                       .decide = {}});
}

void EverydaySource::endFocus()
{
    if (!m_focusEnd || *m_focusEnd > m_needs.clock.wallTime())
        return;
    m_focusEnd.reset();
    publish();
    Q_EMIT peekWanted({.symbol = u"timer"_s,
                       .text = tr("Focus time is up · %1 min done").arg(focusMinutes()),
                       .tone = Peek::Tone::Good,
                       .tab = Tab::Home,
                       .resume = {},
                       .cwd = {},
                       .url = {},
                       .decide = {}});
    m_needs.sounds.play(u"Glass"_s);
}

void EverydaySource::loadMedia()
{
    const auto asking = std::make_shared<Asking>();
    asking->players = playersToAsk(m_needs.players.running());
    asking->answers.resize(asking->players.size());
    asking->open = asking->players.size();
    asking->presses = m_presses;
    if (asking->players.isEmpty())
        showPlayer({}, std::nullopt);
    for (qsizetype i = 0; i < asking->players.size(); ++i) {
        m_needs.players.ask(asking->players[i].id, this, [this, asking, i](const std::optional<MediaReport> &report) {
            asking->answers[i] = velto::nowPlaying(asking->players[i], report);
            if (--asking->open == 0)
                settle(*asking);
        });
    }
}

void EverydaySource::settle(const Asking &asking)
{
    // A press since then would briefly seem undone. The player reports when it has followed, and the next tick asks again.
    if (asking.presses != m_presses)
        return;
    const auto shown = std::ranges::find(asking.players, m_player, &MediaPlayer::id) - asking.players.begin();
    const qsizetype chosen = chosenPlayer(asking.answers, shown);
    if (chosen < 0)
        showPlayer({}, std::nullopt);
    else
        showPlayer(asking.players[chosen].id, asking.answers[chosen]);
}

void EverydaySource::showPlayer(const QString &id, const std::optional<NowPlaying> &playing)
{
    m_player = id;
    m_nowPlaying = playing;
    publish();
}

void EverydaySource::playPause()
{
    if (!m_nowPlaying)
        return;
    m_needs.players.playPause(m_player);
    ++m_presses;
    m_nowPlaying->playing = !m_nowPlaying->playing;
    publish();
}

void EverydaySource::startFocus()
{
    m_focusEnd = m_needs.clock.wallTime().toUTC().addSecs(qint64(focusMinutes()) * 60);
    publish();
}

void EverydaySource::stopFocus()
{
    m_focusEnd.reset();
    publish();
}

QString EverydaySource::focusRemaining() const
{
    if (!m_focusEnd)
        return {};
    const qint64 seconds = qMax(qint64(0), m_needs.clock.wallTime().msecsTo(*m_focusEnd) / 1000);
    return u"%1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString EverydaySource::nextEventText() const
{
    return m_nextEvent ? m_nextEvent->title + u' ' + m_nextEvent->relative(m_needs.clock.wallTime()) : QString();
}

void EverydaySource::publish()
{
    const QDateTime now = m_needs.clock.wallTime();
    keepTicking();
    watchForTurn(now);
    Published next{m_nextEvent,     m_nextEvent ? m_nextEvent->relative(now) : QString(),
                   m_calendarState, calendarToShow(),
                   m_leftToday,     m_nowPlaying,
                   m_focusEnd,      focusRemaining()};
    if (next == m_published)
        return;
    m_published = std::move(next);
    Q_EMIT changed();
}

/// Where there is no meeting, no player and no focus period, a tick would find nothing.
void EverydaySource::keepTicking()
{
    const bool mayPlay = m_needs.prefs.isOn(Prefs::Module::Media) && !m_needs.players.running().isEmpty();
    if (m_calendarState != SourceState::ready() && !m_focusEnd && !mayPlay)
        m_tick.reset();
    else if (!m_tick)
        m_tick = m_needs.clock.every(kTick, [this] { tick(); });
}

/// A turn that is further away than the next tick is left to it: each tick reads the wall clock anyway.
void EverydaySource::watchForTurn(const QDateTime &now)
{
    qint64 soonest = std::chrono::milliseconds(kTick).count();
    if (m_focusEnd) {
        const qint64 left = now.msecsTo(*m_focusEnd);
        soonest = left > 0 ? qMin(soonest, qMin(left, left % 1000 + 1)) : 0;
    }
    if (const auto turn = m_nextEvent ? m_nextEvent->nextTurn(now) : std::nullopt)
        soonest = qMin(soonest, now.msecsTo(*turn));
    if (soonest >= std::chrono::milliseconds(kTick).count()) {
        m_turn.reset();
        return;
    }
    m_turn = m_needs.clock.after(std::chrono::milliseconds(soonest), [this] {
        m_turn.reset();
        endFocus();
        publish();
    });
}

} // namespace velto
