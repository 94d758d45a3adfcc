#pragma once

#include "RunTests.h"
#include "StoreDesk.h"

#include "Feeds/Calendar/MeetingFeed.h"
#include "Feeds/Everyday/EverydaySource.h"

#include <QSignalSpy>

namespace velto {

/// A calendar service that returns what a test sets.
class FakeMeetings final : public MeetingFeed {
    Q_OBJECT
public:
    QList<GoogleMeeting> list;
    bool isLinked = true;
    int refreshes = 0;

    const QList<GoogleMeeting> &meetings() const override { return list; }
    bool linked() const override { return isLinked; }
    bool hasAnswered = false;
    std::optional<QString> problem;
    bool answered() const override { return hasAnswered; }
    std::optional<QString> error() const override { return problem; }
    void refresh() override { ++refreshes; }
};

/// A source with everything it needs. It is nine in the morning.
struct Desk : StoreDesk {
    Desk()
    {
        prefs.set(Prefs::Module::Calendar, true);
        QObject::connect(&source, &EverydaySource::peekWanted, [this](const Peek &peek) { peeks.append(peek); });
    }

    /// The user adds a meeting in the Connect tab.
    void type(const QString &title, const QDateTime &start, const QString &link = {})
    {
        prefs.setMeetingTitle(title);
        prefs.setMeetingStart(start);
        prefs.setMeetingURL(link);
        source.loadCalendar();
    }
    void useGoogle(const QList<GoogleMeeting> &meetings)
    {
        prefs.setCalendarSource(Prefs::CalendarSource::Google);
        google.list = meetings;
        source.loadCalendar();
    }
    /// Half an hour long, with its id as its title.
    GoogleMeeting meeting(const char *id, std::chrono::milliseconds ahead) const
    {
        const auto start = in(ahead).toUTC();
        return {QString::fromLatin1(id), QString::fromLatin1(id), start, start.addSecs(1800), {}, {}};
    }
    QDateTime in(std::chrono::milliseconds step) const { return clock.wallTime().addMSecs(step.count()); }

    FakeMeetings google;
    FakeMediaPlayers players;
    FakeSounds sounds;
    EverydaySource source{{clock, prefs, google, players, sounds}};
    QSignalSpy changes{&source, &EverydaySource::changed};
};

} // namespace velto
