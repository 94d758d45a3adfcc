#include "RunTests.h"
#include "Tabs/Quillbox/SnapshotDate.h"
#include "Tabs/Quillbox/VeltoSnapshot.h"

using namespace Qt::StringLiterals;

namespace velto {

/// A hub's document is taken as a whole or not at all, and its times are read in all four forms.
class SnapshotTest : public QObject {
    Q_OBJECT

    static QByteArray whole()
    {
        return R"json({"todos": [{"id": 9007199254740993, "title": "Ring", "body": "", "due": "2026-03-01", "who": "me", "project": "",
            "scope": "office", "prio": 2, "unknown": {}}], "handoffs": [{"id": 1, "name": "Handoff · api", "topic": null,
            "at": "2026-03-10 12:00:00"}, {"id": 2, "name": "web", "topic": "css", "device": "air", "at": ""}],
            "heard": [{"id": 3, "name": "Tolver: milk", "at": ""}], "gap": {"id": 4.0, "question": "Why?", "grip": ""},
            "written_today": {"note": 3, "fact": 5, "a": 3}})json";
    }

private Q_SLOTS:
    void everyFieldComesAcross()
    {
        const auto read = VeltoSnapshot::decode(whole());
        QVERIFY2(read, qPrintable(read ? QString() : read.error()));
        const VeltoSnapshot::HubTodo todo{9007199254740993, u"Ring"_s, {}, u"2026-03-01"_s, u"me"_s, {}, u"office"_s, 2};
        QCOMPARE(read->todos, QList{todo});
        QCOMPARE(read->handoffs.at(0), (VeltoSnapshot::Handoff{1, u"Handoff · api"_s, {}, {}, u"2026-03-10 12:00:00"_s}));
        QCOMPARE(read->handoffs.at(1), (VeltoSnapshot::Handoff{2, u"web"_s, u"css"_s, u"air"_s, {}}));
        QCOMPARE(read->heard, QList{(VeltoSnapshot::Heard{3, u"Tolver: milk"_s, {}})});
        QCOMPARE(read->gap, (VeltoSnapshot::Gap{4, {}, u"Why?"_s, u""_s}));
        const QList<std::pair<QString, qint64>> written{{u"note"_s, 3}, {u"fact"_s, 5}, {u"a"_s, 3}}; // in the document's order
        QCOMPARE(read->writtenToday, written);
    }

    void whatIsWrongIsToldByKeyAndType()
    {
        const auto row = [](const char *from, const char *to, const QString &description) {
            QByteArray json = whole();
            QVERIFY2(json.contains(from), from);
            const auto read = VeltoSnapshot::decode(json.replace(json.indexOf(from), qstrlen(from), to));
            QVERIFY2(!read, to);
            QCOMPARE(read.error(), description);
        };
        row("\"todos\"", "\"tasks\"", u"\"todos\" is missing"_s);
        row("\"prio\": 2", "\"prio\": \"2\"", u"\"todos[0].prio\" should be an integer and is text"_s);
        row("\"prio\": 2", "\"prio\": 2.5", u"\"todos[0].prio\" should be an integer and is a number"_s);
        row("\"prio\": 2", "\"prio\": true", u"\"todos[0].prio\" should be an integer and is true or false"_s);
        row("9007199254740993", "99999999999999999999", u"\"todos[0].id\" should be an integer and is a number"_s);
        row("\"Ring\"", "null", u"\"todos[0].title\" should be text and is null"_s);
        row("\"css\"", "7", u"\"handoffs[1].topic\" should be text and is a number"_s);
        row("\"name\": \"web\", ", "", u"\"handoffs[1].name\" is missing"_s);
        row("[{\"id\": 3", "[3, {\"id\": 3", u"\"heard[0]\" should be an object and is a number"_s);
        row("\"question\": \"Why?\", ", "", u"\"gap.question\" is missing"_s);
        row("{\"id\": 4.0", "[], \"x\": {\"id\": 4.0", u"\"gap\" should be an object and is a list"_s);
        row("\"fact\": 5", "\"fact\": \"five\"", u"\"written_today.*\" should be an integer and is text"_s);
        row("\"written_today\"", "\"written\"", u"\"written_today\" is missing"_s);
    }

    void bytesThatAreNoDocumentFail()
    {
        const QByteArray nest(1'000'000, '[');
        for (const QByteArray &bytes :
             {QByteArray(), QByteArray("<!DOCTYPE html><p>Sign in</p>"), whole().chopped(40), whole() + whole(), QByteArray("[]"),
              whole().replace("Ring", "\xff\xfe"), nest, "{\"todos\": " + nest + QByteArray(nest.size(), ']') + "}"}) {
            const auto read = VeltoSnapshot::decode(bytes);
            QVERIFY2(!read, bytes.first(qMin(40, bytes.size())).constData());
            QVERIFY(!read.error().isEmpty());
        }
    }

    void theCardMayBeAbsentOrNull()
    {
        const QByteArray rest = R"("todos": [], "handoffs": [], "heard": [], "written_today": {}})";
        QCOMPARE(*VeltoSnapshot::decode("{" + rest), VeltoSnapshot());
        QCOMPARE(*VeltoSnapshot::decode("{\"gap\": null," + rest), VeltoSnapshot());
    }

    void timesAreReadInFourWays()
    {
        const auto row = [](const char *text, const char *utc) {
            const auto date = snapshotDate(QString::fromLatin1(text));
            QCOMPARE(date ? date->toUTC().toString(Qt::ISODateWithMs) : QString(), QString::fromLatin1(utc));
        };
        row("2026-03-10 12:00:00", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T12:00:00Z", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T13:00:00+01:00", "2026-03-10T12:00:00.000Z");
        row("2026-03-09T21:30:00-14:30", "2026-03-10T12:00:00.000Z");
        row("2026-03-10T13:00:00.250999+01:00", "2026-03-10T12:00:00.250Z");
        row("2026-03-10T12:00:00.5Z", "2026-03-10T12:00:00.500Z");
        row("2024-02-29 23:59:59", "2024-02-29T23:59:59.000Z");
        for (const char *none :
             {"", "2026-03-10", "2026-03-10 12:00", "2026-03-10T12:00:00", "2026-03-10 12:00:00Z", "2026-02-29 12:00:00",
              "2026-03-10 24:00:00", "2026-03-10 12:00:00\n", " 2026-03-10 12:00:00", "2026-03-10T12:00:00+25:00"})
            row(none, "");
    }
};

const Registered<SnapshotTest> registered;

} // namespace velto

#include "SnapshotTest.moc"
