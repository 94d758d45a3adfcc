#include "Core/WorkError.h"
#include "Desk.h"
#include "RunTests.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace velto {

/// What Google sends, as calendars and meetings.
class ReadingTest : public QObject {
    Q_OBJECT
private:
    static QDateTime at(int hour, int minute) { return QDateTime(QDate(2026, 11, 21), QTime(hour, minute), Qt::UTC); }
    static QJsonObject standup()
    {
        return QJsonDocument::fromJson(fixture("google/events.json")).object().value(u"items"_s).toArray().first().toObject();
    }

private Q_SLOTS:
    void wholeRepliesAreRead()
    {
        const auto calendars = parseCalendars(fixture("google/calendar-list.json"));
        QCOMPARE(calendars.size(), 2);
        QCOMPARE(calendars[0].summary, u"Holidays in United Kingdom"_s);
        QVERIFY(!calendars[0].primary);
        QCOMPARE(calendars[1].id, u"ada@example.com"_s);
        QCOMPARE(calendars[1].primary, std::optional(true));

        const auto meetings = parseMeetings(fixture("google/events.json"), u"ada@example.com"_s);
        const QList<GoogleMeeting> expected{
            {u"7k2standup_20261121T100000Z"_s, u"Standup"_s, at(10, 0), at(10, 15),
             QUrl(u"https://meet.google.com/abc-defg-hij"_s), u"ada@example.com"_s},
            {u"untitled"_s, u"Meeting"_s, at(13, 0), at(14, 30), QUrl(u"https://meet.google.com/untitled"_s),
             u"ada@example.com"_s},
        };
        QCOMPARE(meetings, expected);
    }

    void oddFieldsCostNoMoreThanTheyMust()
    {
        const QString skipped = u"skipped"_s;
        const QString whole = u"Standup 600 900 https://meet.google.com/abc-defg-hij"_s;
        const QString hour = u"Standup 600 3600 https://meet.google.com/abc-defg-hij"_s;
        const QString hangout = u"Standup 600 900 https://meet.google.com/old-link-xyz"_s;
        const QString unlinked = u"Standup 600 900 "_s;
        const auto row = [&](const QByteArray &changes, const QString &outcome) {
            QJsonObject event = standup();
            const QJsonObject changed = QJsonDocument::fromJson(changes).object();
            for (const QString &name : changed.keys())
                event.insert(name, changed.value(name));
            const auto meeting = meetingOf(event, {});
            const QString seen = meeting ? u"%1 %2 %3 %4"_s.arg(meeting->title)
                                               .arg(at(0, 0).secsTo(meeting->start) / 60)
                                               .arg(meeting->start.secsTo(meeting->end))
                                               .arg(meeting->joinURL.value_or(QUrl()).toString())
                                         : skipped;
            QVERIFY2(seen == outcome, qPrintable(QLatin1String(changes) + u' ' + seen));
        };
        for (const char *changes :
             {R"({"id": null})", R"({"id": 7})", R"({"status": "cancelled"})", R"({"start": "2026-11-21T10:00:00Z"})",
              R"({"start": {"dateTime": 1795255200}})", R"({"start": {"dateTime": "2026-11-21T10:00:00.5Z"}})"})
            row(changes, skipped);
        row(R"({"status": true})", whole);
        row(R"({"hangoutLink": 17})", whole);
        row(R"({"summary": {}})", u"Meeting 600 900 https://meet.google.com/abc-defg-hij"_s);
        row(R"({"end": null})", hour);
        row(R"({"end": {"dateTime": "soon"}})", hour);
        row(R"({"conferenceData": []})", hangout);
        for (const auto &[points, outcome] : // of the link
             {std::pair("{}", hangout),
              {"[{'entryPointType': 'video', 'uri': 'https://a.example'}, 3]", hangout},
              {"[{'entryPointType': 'phone', 'uri': 'tel:1'}]", hangout},
              {"[{'entryPointType': 'video'}, {'entryPointType': 'video', 'uri': 'https://a.example'}]", hangout},
              {"[{'entryPointType': 'video', 'uri': 'http://['}]", unlinked}})
            row("{\"conferenceData\": {\"entryPoints\": " + QByteArray(points).replace('\'', '"') + "}}", outcome);
    }

    void listsAreReadOrRefused()
    {
        for (const char *odd : {"[]", "{}", "{\"items\": {}}", "{\"items\": [{\"id\": \"a\", \"summary\": \"b\"}, 3]}",
                                "{\"items\": [{\"id\": 1, \"summary\": \"b\"}, {\"id\": \"a\"}]}"})
            QVERIFY2(parseCalendars(odd).isEmpty(), odd);
        for (const QByteArray &broken : {QByteArray(), QByteArray("<!DOCTYPE html>"), QByteArray("{\"items\": ["),
                                         QByteArray(100'000, '['), QByteArray("{\"a\": \"\xff\"}")})
            QVERIFY_THROWS_EXCEPTION(WorkError, parseMeetings(broken, {}));
    }

    void instantsAreReadInTheInternetsForm()
    {
        const auto instant = [](const QString &text) { return internetDateTime(text).value_or(QDateTime()); };
        for (const char *text : {"2026-11-21T10:00:00Z", "2026-11-21t10:00:00z", "2026-11-21T15:30:00+05:30",
                                 "2026-11-20T22:00:00-12:00", "2026-11-21T09:59:60Z"})
            QCOMPARE(instant(QLatin1String(text)), at(10, 0));
        for (const char *text : {"", "2026-11-21", "2026-11-21T10:00:00", "2026-11-21 10:00:00Z", "2026-02-30T10:00:00Z",
                                 "2026-11-21T25:00:00Z", "2026-11-21T10:00:61Z", "2026-11-21T10:00:00+24:00",
                                 "2026-11-21T10:00:00+0100", "2026-11-21T10:00:00Z\n", "12026-11-21T10:00:00Z"})
            QVERIFY2(!internetDateTime(QLatin1String(text)), text);
        QVERIFY(!internetDateTime(u"２０２６-11-21T10:00:00Z"_s)); // other digits
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
