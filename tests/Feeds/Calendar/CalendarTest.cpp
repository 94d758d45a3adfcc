#include "Desk.h"
#include "RunTests.h"

using namespace Qt::StringLiterals;

namespace velto {

/// The calendars and meetings of a connected account.
class CalendarTest : public QObject {
    Q_OBJECT
private:
    using Manner = HttpStandIn::Manner;

    static QByteArray event(const char *id, const char *start, const char *end)
    {
        return QByteArray(R"({"id": "%1", "start": {"dateTime": "2026-11-21T%2Z"}, "end": {"dateTime": "2026-11-21T%3Z"}})")
            .replace("%1", id)
            .replace("%2", start)
            .replace("%3", end);
    }
    static QString ids(const Desk &desk)
    {
        QStringList ids;
        for (const GoogleMeeting &meeting : desk.calendar->meetings())
            ids.append(meeting.calendarID.first(1) + meeting.id);
        return ids.join(u' ');
    }

private Q_SLOTS:
    void thePrimaryCalendarIsTheFirstChoice()
    {
        Desk desk;
        desk.link();
        QVERIFY(desk.refresh());
        QCOMPARE(desk.prefs.googleCalendarIDs(), QStringList{u"ada@example.com"_s});
        QCOMPARE(desk.calendar->calendars().size(), 2);
        QCOMPARE(desk.google.requests.value(0).target, QByteArray("/calendar/v3/users/me/calendarList"));
        QCOMPARE(desk.google.requests.value(1).target,
                 QByteArray("/calendar/v3/calendars/ada@example.com/events?timeMin=2026-11-21T08:00:00Z&timeMax="
                            "2026-11-22T09:00:00Z&singleEvents=true&orderBy=startTime&maxResults=20"));
        desk.changes.clear();
        QVERIFY(desk.refresh());
        QCOMPARE(desk.google.requests.size(), 4);
        QCOMPARE(desk.changes.size(), 0); // the same world

        Desk secondary;
        secondary.link();
        secondary.list.body = R"({"items": [{"id": "a b#/é%", "summary": "A"}, {"id": "b", "summary": "B", "primary": "yes"}]})";
        QVERIFY(secondary.refresh());
        QVERIFY(secondary.prefs.googleCalendarIDs().isEmpty());
        QCOMPARE(secondary.google.requests.size(), 2);
        QVERIFY(secondary.google.requests.value(1).target.startsWith("/calendar/v3/calendars/a%20b%23/%C3%A9%25/events?"));
        QCOMPARE(secondary.calendar->meetings().value(0).calendarID, u"a b#/é%"_s);
        secondary.list.body = R"({"kind": "calendar#calendarList"})";
        QVERIFY(secondary.refresh());
        QCOMPARE(secondary.google.requests.size(), 3);
        QVERIFY(!secondary.calendar->error() && !secondary.calendar->hasCalendars());
    }

    void whatIsOverIsLeftOutAndTiesStayInOrder()
    {
        Desk desk;
        desk.link();
        desk.prefs.setGoogleCalendarIDs({u"x"_s, u"y"_s});
        desk.events.body = "{\"items\": [" + event("late", "11:00:00", "12:00:00") + ',' + event("runs", "08:10:00", "09:30:00")
            + ',' + event("over", "08:30:00", "08:59:00") + ',' + event("ends", "08:30:00", "09:00:00") + ','
            + event("tie", "11:00:00", "11:30:00") + "]}";
        QVERIFY(desk.refresh());
        QCOMPARE(ids(desk), u"xruns yruns xlate xtie ylate ytie"_s);
    }

    void aFailureLeavesTheMeetings()
    {
        const auto row = [](HttpStandIn::Answer Desk::*failing, const HttpStandIn::Answer &answer, const char *error) {
            Desk desk;
            desk.link();
            QVERIFY(desk.refresh());
            const HttpStandIn::Answer good = desk.*failing;
            desk.*failing = answer;
            desk.list.body.replace("Holidays in", "Holidays of");
            QVERIFY(desk.refresh());
            QCOMPARE(desk.calendar->errorText(), QLatin1String(error));
            QCOMPARE(desk.calendar->meetings().size(), 2);
            QCOMPARE(desk.calendar->calendars().value(0).summary.contains(u" of "_s), failing == &Desk::events);
            desk.*failing = good;
            QVERIFY(desk.refresh());
            QVERIFY(!desk.calendar->error());
        };
        for (HttpStandIn::Answer Desk::*failing : {&Desk::list, &Desk::events}) {
            row(failing, {401, R"({"error": {"code": 401}})"}, "Google Calendar could not be refreshed");
            row(failing, {429, "{}", {"Retry-After: 0"}}, "Google Calendar could not be refreshed");
            row(failing, {204, ""}, "Google Calendar could not be refreshed");
            row(failing, {200, "<!DOCTYPE html><html></html>"}, "a web page came in place of an answer");
            row(failing, {200, ""}, "the answer can't be read: illegal value");
            row(failing, {200, "{\"items\": [{\"id\": \"a\""}, "the answer can't be read: unterminated string");
            row(failing, {200, fixture("google/events.json"), {}, Manner::CutOff}, "The connection ended without an answer.");
        }
    }

    void calendarsAreChosenByHand()
    {
        Desk desk;
        desk.link();
        QVERIFY(desk.refresh());
        const auto chosen = [&] {
            QAbstractItemModel *rows = desk.calendar->calendarRows();
            const int role = int(rows->roleNames().key("chosen"));
            return u"%1 %2"_s.arg(rows->index(0, 0).data(role).toBool()).arg(rows->index(1, 0).data(role).toBool());
        };
        QCOMPARE(chosen(), u"0 1"_s);
        desk.calendar->choose(desk.calendar->calendars().value(0).id, true);
        QCOMPARE(chosen(), u"1 1"_s);
        QVERIFY(desk.settle());
        QCOMPARE(desk.calendar->meetings().size(), 4);
        desk.calendar->choose(u"ada@example.com"_s, false);
        QVERIFY(desk.settle());
        QCOMPARE(chosen(), u"1 0"_s);
        QCOMPARE(ids(desk), u"e7k2standup_20261121T100000Z euntitled"_s);
    }
};

const Registered<CalendarTest> registered;

} // namespace velto

#include "CalendarTest.moc"
