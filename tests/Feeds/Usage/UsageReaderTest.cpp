#include "RunTests.h"

#include "Feeds/Usage/UsageReader.h"
#include "Platform/Posix/PosixFileTree.h"

#include <QDir>
#include <QTemporaryDir>
#include <thread>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// A line as Claude Code logs an answer, with these counts.
QByteArray answerLine(const QByteArray &timestamp, int input, int output, int cacheRead = 0, int cacheWrite = 0)
{
    return QStringLiteral("{'message':{'usage':{'input_tokens':%1,'cache_creation_input_tokens':%2,'cache_read_input_tokens':%3,"
                          "'output_tokens':%4,'service_tier':'standard'}},'type':'assistant','timestamp':'%5'}\n")
        .arg(input)
        .arg(cacheWrite)
        .arg(cacheRead)
        .arg(output)
        .arg(QLatin1StringView(timestamp))
        .replace(u'\'', u'"')
        .toLatin1();
}

/// A folder of logs, touched when the test asks for it.
struct Desk {
    QTemporaryDir home;
    QDateTime now{QDate(2026, 11, 21), QTime(9, 0)};
    PosixFileTree tree;
    UsageReader reader{tree, claudeLogs(home.path())};

    QString path(const QString &name) const { return claudeLogs(home.path()) + u'/' + name; }
    QByteArray stamp(const QTime &time) const
    {
        return QDateTime(now.date(), time).toUTC().toString(Qt::ISODateWithMs).toLatin1();
    }
    QByteArray answer(int input) const { return answerLine(stamp(QTime(8, 30)), input, 1); }

    void write(const QString &name, const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::Append)
    {
        QFile file(path(name));
        QVERIFY(QFileInfo(file).dir().mkpath(u"."_s));
        QVERIFY(file.open(mode) && file.write(bytes) == bytes.size() && file.flush());
        touch(name, now);
    }
    void touch(const QString &name, const QDateTime &time) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    TokenUsage read() { return reader.read(now); }
    qint64 input() { return read().input; }
};

} // namespace

/// How a day's tokens add up while logs are written.
class UsageReaderTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void addsUpWhatWasAdded()
    {
        Desk desk;
        QCOMPARE(desk.read(), TokenUsage{}); // no folder yet
        desk.write(u"-p/a.jsonl"_s, answerLine(desk.stamp(QTime(8, 0, 0, 5)), 1, 20, 300, 4000));
        desk.write(u"-q/deep/er/b.jsonl"_s, "{\"type\":\"user\",\"usage\":{\"input_tokens\":5}}\n\n" + desk.answer(10));
        TokenUsage usage{11, 21, 300, 4000, 2, QDateTime(desk.now.date(), QTime(8, 0, 0, 5))};
        usage.hours[8] = 1 + 20 + 4000 + 10 + 1;
        QCOMPARE(desk.read(), usage);
        QCOMPARE(desk.read(), usage);
        desk.write(u"-p/a.jsonl"_s, answerLine(desk.stamp(QTime(7, 0)), 100, 0));
        usage = {111, 21, 300, 4000, 3, QDateTime(desk.now.date(), QTime(7, 0)), usage.hours};
        usage.hours[7] = 100;
        QCOMPARE(desk.read(), usage);
        // The same answer in two files counts twice.
        desk.write(u"-p/c.jsonl"_s, answerLine(desk.stamp(QTime(7, 0)), 100, 0));
        QCOMPARE(desk.input(), 211);
        desk.reader.stop();
        desk.write(u"-p/a.jsonl"_s, desk.answer(20));
        QCOMPARE(desk.input(), 211);
    }

    void waitsForTheEndOfALine()
    {
        Desk desk;
        const QByteArray line = desk.answer(5);
        for (const auto &name : {u"-p/a.jsonl"_s, u"-p/b.jsonl"_s}) // and none continues in another file
            desk.write(name, line + line.left(40));
        QCOMPARE(desk.input(), 10);
        desk.write(u"-p/a.jsonl"_s, line.mid(40).chopped(1));
        QCOMPARE(desk.input(), 10);
        desk.write(u"-p/a.jsonl"_s, "\n");
        QCOMPARE(desk.input(), 15);
        QCOMPARE(desk.input(), 15);
    }

    void looksAtLogsOnly()
    {
        Desk desk;
        for (const QString &name : {u"-p/a.json"_s, u"-p/a.JSONL"_s, u"-p/a.jsonl.bak"_s, u"-p/.jsonl"_s, u"-p/ajsonl"_s})
            desk.write(name, desk.answer(1));
        QVERIFY(QDir().mkpath(desk.path(u"-p/folder.jsonl"_s)));
        desk.write(u"-p/.hidden.jsonl"_s, desk.answer(20));
        desk.write(u"at the top.jsonl"_s, desk.answer(300));
        desk.write(u"../elsewhere/linked.jsonl"_s, desk.answer(4000));
        // A link to a folder may lead upwards.
        QVERIFY(QFile::link(desk.path(u"."_s), desk.path(u"-p/loop"_s)));
        QVERIFY(QFile::link(desk.path(u"../elsewhere/linked.jsonl"_s), desk.path(u"-p/link.jsonl"_s)));
        QVERIFY(QFile::link(desk.path(u"nowhere"_s), desk.path(u"-p/dangling.jsonl"_s)));
        QCOMPARE(desk.input(), 4320);
    }

    void countsOneDay()
    {
        Desk desk;
        const QDateTime midnight = desk.now.date().startOfDay();
        const auto at = [&](qint64 milliseconds) {
            return midnight.addMSecs(milliseconds).toUTC().toString(Qt::ISODateWithMs).toLatin1();
        };
        desk.write(u"-p/a.jsonl"_s, answerLine(at(-60'000), 1, 0) + answerLine(at(-1), 20, 0) + answerLine(at(0), 300, 0));
        QCOMPARE(desk.read(), (TokenUsage{300, 0, 0, 0, 1, midnight, {300}}));
        // Files are passed over that weren't touched since midnight.
        desk.write(u"-p/old.jsonl"_s, desk.answer(4000));
        desk.touch(u"-p/old.jsonl"_s, midnight.addMSecs(-1));
        QCOMPARE(desk.input(), 300);
        desk.touch(u"-p/old.jsonl"_s, midnight);
        QCOMPARE(desk.input(), 4300);
        // The next day's lines may be written before the first reading of that day.
        desk.now = desk.now.addDays(1);
        desk.write(u"-p/a.jsonl"_s, desk.answer(50'000));
        TokenUsage usage{50'000, 1, 0, 0, 1, QDateTime(desk.now.date(), QTime(8, 30))};
        usage.hours[8] = 50'001;
        QCOMPARE(desk.read(), usage);
        desk.write(u"-p/a.jsonl"_s, desk.answer(600'000));
        QCOMPARE(desk.input(), 650'000);
        // The clock is set back: the earlier day again, with the lines of both days from files touched since.
        desk.now = desk.now.addDays(-1);
        QCOMPARE(desk.input(), 654'300);
    }

    void leavesAloneWhatHasShrunk()
    {
        Desk desk;
        const QString name = u"-p/a.jsonl"_s;
        desk.write(name, desk.answer(1) + desk.answer(2));
        QCOMPARE(desk.input(), 3);
        desk.write(name, desk.answer(4), QIODevice::WriteOnly);
        QCOMPARE(desk.input(), 3);
        // When it grows beyond what was read, its new lines count; nothing counts twice.
        desk.write(name, desk.answer(8));
        QCOMPARE(desk.input(), 3);
        desk.write(name, desk.answer(5));
        QCOMPARE(desk.input(), 8);
        // So is one that was rotated.
        QVERIFY(QFile::rename(desk.path(name), desk.path(name + u".1"_s)));
        QCOMPARE(desk.input(), 8);
        desk.write(name, desk.answer(16));
        desk.write(u"-p/b.jsonl"_s, desk.answer(32));
        QCOMPARE(desk.input(), 40);
    }

    void passesOverLongLines()
    {
        Desk desk;
        const auto ofSize = [&](int size, int input) {
            QByteArray line = desk.answer(input);
            return line.insert(1, QByteArray(size - line.size() + 1, ' ')); // its size without the line feed
        };
        desk.write(u"-p/a.jsonl"_s, ofSize(1'999'999, 1) + ofSize(2'000'000, 20) + desk.answer(300) + ofSize(5'000'000, 4000));
        QCOMPARE(desk.input(), 301);
        desk.write(u"-p/a.jsonl"_s, desk.answer(50'000));
        QCOMPARE(desk.input(), 50'301);
        // A line that never ends isn't counted, however often it is read.
        desk.write(u"-p/b.jsonl"_s, ofSize(3'000'000, 7).chopped(1));
        QCOMPARE(desk.input(), 50'301);
        desk.write(u"-p/b.jsonl"_s, '\n' + desk.answer(600'000));
        QCOMPARE(desk.input(), 650'301);
    }

    void takesLinesOfEverySize()
    {
        // Line ends before, on and after every possible end of the buffer.
        Desk desk;
        constexpr int kBuffer = 256 * 1024;
        int input = 0;
        for (const int size : {kBuffer - 1, kBuffer, kBuffer + 1, 2 * kBuffer - 1, 2 * kBuffer, 2 * kBuffer + 1}) {
            for (int before = 0; before < 3; ++before) {
                const QByteArray line = desk.answer(1);
                const QByteArray padded = QByteArray(line).insert(1, QByteArray(size - line.size(), ' '));
                desk.write(u"-p/%1-%2.jsonl"_s.arg(size).arg(before),
                           QByteArray(before, '\n') + padded + line + padded + line + line);
                input += 5;
            }
        }
        QCOMPARE(desk.read().turns, input);
        QCOMPARE(desk.input(), input);
    }

    void keepsSumsInBounds()
    {
        Desk desk;
        const QByteArray large = desk.answer(77).replace(":77,", ":9000000000000000000,");
        desk.write(u"-p/a.jsonl"_s, large + large);
        QCOMPARE(desk.input(), std::numeric_limits<qint64>::max());
        desk.write(u"-p/a.jsonl"_s, QByteArray(large).replace(":9", ":-9"));
        QVERIFY(desk.input() > 0);
    }

    void countsOnceForAllThreads()
    {
        Desk desk;
        QByteArray lines;
        for (int i = 0; i < 2000; ++i)
            lines += desk.answer(1);
        desk.write(u"-p/a.jsonl"_s, lines);
        std::vector<std::thread> threads;
        std::array<TokenUsage, 4> results;
        for (TokenUsage &result : results)
            threads.emplace_back([&] { result = desk.read(); });
        for (std::thread &thread : threads)
            thread.join();
        for (const TokenUsage &result : results)
            QCOMPARE(result.input, 2000);
    }
};

const Registered<UsageReaderTest> registered;

} // namespace velto

#include "UsageReaderTest.moc"
