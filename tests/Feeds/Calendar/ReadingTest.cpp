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

    void oddFieldsCostNoMoreThanTheyMust_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("value"); ///< in brackets; empty for a field that is missing
        QTest::addColumn<QString>("outcome");
        const QString skipped = QStringLiteral("skipped");
        const QString whole = QStringLiteral("Standup 600 900 https://meet.google.com/abc-defg-hij");
        const QString hour = QStringLiteral("Standup 600 3600 https://meet.google.com/abc-defg-hij");
        const QString hangout = QStringLiteral("Standup 600 900 https://meet.google.com/old-link-xyz");
        const QString unlinked = QStringLiteral("Standup 600 900 ");
        const auto row = [](const char *path, const char *value, const QString &outcome) {
            QTest::addRow("%s %s", path, value) << QString::fromLatin1(path) << QByteArray(value) << outcome;
        };
        row("id", "", skipped);
        row("id", "[7]", skipped);
        row("status", "[\"cancelled\"]", skipped);
        row("status", "[true]", whole);
        row("summary", "[{}]", QStringLiteral("Meeting 600 900 https://meet.google.com/abc-defg-hij"));
        row("start", "[\"2026-11-21T10:00:00Z\"]", skipped);
        row("start.dateTime", "[1795255200]", skipped);
        row("start.dateTime", "[\"2026-11-21T10:00:00.5Z\"]", skipped);
        row("end", "[null]", hour);
        row("end.dateTime", "[\"soon\"]", hour);
        row("conferenceData", "[[]]", hangout);
        row("conferenceData.entryPoints", "[{}]", hangout);
        row("conferenceData.entryPoints", "[[{\"entryPointType\": \"video\", \"uri\": \"https://a.example\"}, 3]]", hangout);
        row("conferenceData.entryPoints", "[[{\"entryPointType\": \"phone\", \"uri\": \"tel:1\"}]]", hangout);
        row("conferenceData.entryPoints",
            "[[{\"entryPointType\": \"video\"}, {\"entryPointType\": \"video\", \"uri\": \"https://a.example\"}]]", hangout);
        row("conferenceData.entryPoints", "[[{\"entryPointType\": \"video\", \"uri\": \"http://[\"}]]", unlinked);
        row("hangoutLink", "[17]", whole);
    }

    void oddFieldsCostNoMoreThanTheyMust()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, value);
        QFETCH(QString, outcome);
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
                                     : QStringLiteral("skipped");
        QCOMPARE(seen, outcome);
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

    void instantsAreReadInTheInternetsForm_data()
    {
        columns<QString, QDateTime>({"text", "instant"});
        const QDateTime ten = at(10, 0);
        QTest::newRow("utc") << QStringLiteral("2026-11-21T10:00:00Z") << ten;
        QTest::newRow("lower case") << QStringLiteral("2026-11-21t10:00:00z") << ten;
        QTest::newRow("east") << QStringLiteral("2026-11-21T15:30:00+05:30") << ten;
        QTest::newRow("west, the day before") << QStringLiteral("2026-11-20T22:00:00-12:00") << ten;
        QTest::newRow("leap second") << QStringLiteral("2026-11-21T09:59:60Z") << ten;
        for (const char *text : {"", "2026-11-21", "2026-11-21T10:00:00", "2026-11-21 10:00:00Z", "2026-02-30T10:00:00Z",
                                 "2026-11-21T25:00:00Z", "2026-11-21T10:00:61Z", "2026-11-21T10:00:00+24:00",
                                 "2026-11-21T10:00:00+0100", "2026-11-21T10:00:00Z\n", "12026-11-21T10:00:00Z"})
            QTest::newRow(text) << QString::fromLatin1(text) << QDateTime();
        QTest::newRow("other digits") << QStringLiteral("２０２６-11-21T10:00:00Z") << QDateTime();
    }

    void instantsAreReadInTheInternetsForm()
    {
        QFETCH(QString, text);
        QFETCH(QDateTime, instant);
        QCOMPARE(internetDateTime(text).value_or(QDateTime()), instant);
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
