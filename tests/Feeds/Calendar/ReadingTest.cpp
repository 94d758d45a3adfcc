#include "Core/WorkError.h"
#include "Desk.h"
#include "RunTests.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace velto {

/// What Google sends, as calendars and meetings.
class ReadingTest : public QObject {
    Q_OBJECT
private:
    static QDateTime at(int hour, int minute) { return QDateTime(QDate(2026, 11, 21), QTime(hour, minute), Qt::UTC); }
    static QJsonObject standup()
    {
        return QJsonDocument::fromJson(fixture("google/events.json"))
            .object()
            .value(QStringLiteral("items"))
            .toArray()
            .first()
            .toObject();
    }

private Q_SLOTS:
    void wholeRepliesAreRead()
    {
        const auto calendars = parseCalendars(fixture("google/calendar-list.json"));
        QCOMPARE(calendars.size(), 2);
        QCOMPARE(calendars[0].summary, QStringLiteral("Holidays in United Kingdom"));
        QVERIFY(!calendars[0].primary);
        QCOMPARE(calendars[1].id, QStringLiteral("ada@example.com"));
        QCOMPARE(calendars[1].primary, std::optional(true));

        const auto meetings = parseMeetings(fixture("google/events.json"), QStringLiteral("ada@example.com"));
        const QList<GoogleMeeting> expected{
            {QStringLiteral("7k2standup_20261121T100000Z"), QStringLiteral("Standup"), at(10, 0), at(10, 15),
             QUrl(QStringLiteral("https://meet.google.com/abc-defg-hij")), QStringLiteral("ada@example.com")},
            {QStringLiteral("untitled"), QStringLiteral("Meeting"), at(13, 0), at(14, 30),
             QUrl(QStringLiteral("https://meet.google.com/untitled")), QStringLiteral("ada@example.com")},
        };
        QCOMPARE(meetings, expected);
    }

    void oddFieldsCostNoMoreThanTheyMust()
    {
        const QString skipped = QStringLiteral("skipped");
        const QString whole = QStringLiteral("Standup 600 900 https://meet.google.com/abc-defg-hij");
        const QString hour = QStringLiteral("Standup 600 3600 https://meet.google.com/abc-defg-hij");
        const QString hangout = QStringLiteral("Standup 600 900 https://meet.google.com/old-link-xyz");
        const QString unlinked = QStringLiteral("Standup 600 900 ");
        // The value in brackets; empty for a missing field.
        const auto row = [&](const QString &path, const QByteArray &value, const QString &outcome) {
            QJsonObject event = standup();
            const QString outer = path.section(u'.', 0, 0);
            const QString inner = path.section(u'.', 1);
            QJsonObject part = event.value(outer).toObject();
            const QJsonArray wrapped = QJsonDocument::fromJson(value).array();
            const QJsonValue odd = wrapped.isEmpty() ? QJsonValue(QJsonValue::Undefined) : wrapped.first();
            part.insert(inner, odd);
            event.insert(outer, inner.isEmpty() ? odd : QJsonValue(part));
            const auto meeting = meetingOf(event, {});
            const QString seen = meeting ? QStringLiteral("%1 %2 %3 %4")
                                               .arg(meeting->title)
                                               .arg(at(0, 0).secsTo(meeting->start) / 60)
                                               .arg(meeting->start.secsTo(meeting->end))
                                               .arg(meeting->joinURL.value_or(QUrl()).toString())
                                         : skipped;
            QVERIFY2(seen == outcome, qPrintable(path + u' ' + QLatin1String(value) + QLatin1String(": ") + seen));
        };
        row(QStringLiteral("id"), "", skipped);
        row(QStringLiteral("id"), "[7]", skipped);
        row(QStringLiteral("status"), "[\"cancelled\"]", skipped);
        row(QStringLiteral("status"), "[true]", whole);
        row(QStringLiteral("summary"), "[{}]", QStringLiteral("Meeting 600 900 https://meet.google.com/abc-defg-hij"));
        row(QStringLiteral("start"), "[\"2026-11-21T10:00:00Z\"]", skipped);
        row(QStringLiteral("start.dateTime"), "[1795255200]", skipped);
        row(QStringLiteral("start.dateTime"), "[\"2026-11-21T10:00:00.5Z\"]", skipped);
        row(QStringLiteral("end"), "[null]", hour);
        row(QStringLiteral("end.dateTime"), "[\"soon\"]", hour);
        row(QStringLiteral("conferenceData"), "[[]]", hangout);
        row(QStringLiteral("conferenceData.entryPoints"), "[{}]", hangout);
        row(QStringLiteral("conferenceData.entryPoints"),
            "[[{\"entryPointType\": \"video\", \"uri\": \"https://a.example\"}, 3]]", hangout);
        row(QStringLiteral("conferenceData.entryPoints"), "[[{\"entryPointType\": \"phone\", \"uri\": \"tel:1\"}]]", hangout);
        row(QStringLiteral("conferenceData.entryPoints"),
            "[[{\"entryPointType\": \"video\"}, {\"entryPointType\": \"video\", \"uri\": \"https://a.example\"}]]", hangout);
        row(QStringLiteral("conferenceData.entryPoints"), "[[{\"entryPointType\": \"video\", \"uri\": \"http://[\"}]]", unlinked);
        row(QStringLiteral("hangoutLink"), "[17]", whole);
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
        QVERIFY(!internetDateTime(QStringLiteral("２０２６-11-21T10:00:00Z"))); // full-width digits
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
