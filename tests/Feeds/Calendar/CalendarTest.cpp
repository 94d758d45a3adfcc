#include "Desk.h"
#include "RunTests.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velto {

/// The calendars and meetings of a connected account.
class CalendarTest : public QObject {
    Q_OBJECT
private:
    using Manner = HttpStandIn::Manner;

    static QByteArray event(const char *id, const char *start, const char *end)
    {
        const auto at = [](const char *time) { return QStringLiteral("2026-11-21T%1Z").arg(QLatin1String(time)); };
        const QJsonObject event{{QStringLiteral("id"), QLatin1String(id)},
                                {QStringLiteral("start"), QJsonObject{{QStringLiteral("dateTime"), at(start)}}},
                                {QStringLiteral("end"), QJsonObject{{QStringLiteral("dateTime"), at(end)}}}};
        return QJsonDocument(event).toJson();
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
        QCOMPARE(desk.prefs.googleCalendarIDs(), QStringList{QStringLiteral("ada@example.com")});
        QCOMPARE(desk.calendar->calendars().size(), 2);
        QCOMPARE(desk.google.requests.value(0).target, QByteArray("/calendar/v3/users/me/calendarList"));
        QCOMPARE(desk.google.requests.value(1).target,
                 QByteArray("/calendar/v3/calendars/ada@example.com/events?timeMin=2026-11-21T08:00:00Z&timeMax="
                            "2026-11-22T09:00:00Z&singleEvents=true&orderBy=startTime&maxResults=20"));
    }

    void withoutAPrimaryOneTheFirstIsReadAndNothingChosen()
    {
        Desk desk;
        desk.link();
        desk.list.body = R"({"items": [{"id": "a b#/é%", "summary": "A"}, {"id": "b", "summary": "B", "primary": "yes"}]})";
        QVERIFY(desk.refresh());
        QVERIFY(desk.prefs.googleCalendarIDs().isEmpty());
        QCOMPARE(desk.google.requests.size(), 2);
        QVERIFY(desk.google.requests.value(1).target.startsWith("/calendar/v3/calendars/a%20b%23/%C3%A9%25/events?"));
        QCOMPARE(desk.calendar->meetings().value(0).calendarID, QStringLiteral("a b#/é%"));
    }

    void anAccountWithoutCalendarsIsEmptyAndWell()
    {
        Desk desk;
        desk.link();
        desk.list.body = R"({"kind": "calendar#calendarList"})";
        QVERIFY(desk.refresh());
        QCOMPARE(desk.google.requests.size(), 1);
        QVERIFY(!desk.calendar->error());
        QVERIFY(!desk.calendar->hasCalendars());
    }

    void whatIsOverIsLeftOutAndTiesStayInOrder()
    {
        Desk desk;
        desk.link();
        desk.prefs.setGoogleCalendarIDs({QStringLiteral("x"), QStringLiteral("y")});
        desk.events.body = "{\"items\": [" + event("late", "11:00:00", "12:00:00") + ',' + event("runs", "08:10:00", "09:30:00")
            + ',' + event("over", "08:30:00", "08:59:00") + ',' + event("ends", "08:30:00", "09:00:00") + ','
            + event("tie", "11:00:00", "11:30:00") + "]}";
        QVERIFY(desk.refresh());
        QCOMPARE(ids(desk), QStringLiteral("xruns yruns xlate xtie ylate ytie"));
    }

    void theSameWorldIsSilent()
    {
        Desk desk;
        desk.link();
        QVERIFY(desk.refresh());
        desk.changes.clear();
        QVERIFY(desk.refresh());
        QCOMPARE(desk.google.requests.size(), 4);
        QCOMPARE(desk.changes.size(), 0);
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
            QCOMPARE(desk.calendar->calendars().value(0).summary.contains(QStringLiteral(" of ")), failing == &Desk::events);
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
            return QStringLiteral("%1 %2").arg(rows->index(0, 0).data(role).toBool()).arg(rows->index(1, 0).data(role).toBool());
        };
        QCOMPARE(chosen(), QStringLiteral("0 1"));
        desk.calendar->choose(desk.calendar->calendars().value(0).id, true);
        QCOMPARE(chosen(), QStringLiteral("1 1"));
        QVERIFY(desk.settle());
        QCOMPARE(desk.calendar->meetings().size(), 4);
        desk.calendar->choose(QStringLiteral("ada@example.com"), false);
        QVERIFY(desk.settle());
        QCOMPARE(chosen(), QStringLiteral("1 0"));
        QCOMPARE(ids(desk), QStringLiteral("e7k2standup_20261121T100000Z euntitled"));
    }
};

const Registered<CalendarTest> registered;

} // namespace velto

#include "CalendarTest.moc"
