#include "Platform/FileWriter.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <semaphore>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

/// A disk that writes only when allowed to, and a writer with a thread of its own.
class FileWriterTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void onlyTheNewestStateIsWrittenAndInTurn()
    {
        save(u"a"_s, 1);
        save(u"b"_s, 1);
        save(u"a"_s, 2);
        save(u"a"_s, 3);
        QVERIFY(!m_writer->isSaved(u"a"_s));
        QTest::qWait(20);
        QCOMPARE(m_done, QStringList()); // nothing waited for the disk
        m_disk.release(9);
        QTRY_VERIFY(m_writer->isSaved(u"a"_s) && m_writer->isSaved(u"b"_s));
        QCOMPARE(m_done, QStringList({u"a1"_s, u"b1"_s, u"a3"_s}));
        QCOMPARE(m_told, QStringList({u"b1"_s, u"a3"_s})); // a1 is no longer the newest state by then
    }

    void whatFailsIsTriedAgainWithGrowingPauses()
    {
        m_disk.release(99);
        m_failure = u"Full."_s;
        save(u"a"_s, 1);
        QList<int> tries;
        for (int second = 1; second <= 100; ++second) {
            bool idle = false;
            m_lane->start([] {}, [&idle] { idle = true; });
            QTRY_VERIFY(idle);
            if (m_tries > tries.size())
                tries.append(second);
            m_clock.advance(1s);
        }
        QCOMPARE(tries, QList<int>({1, 2, 4, 8, 16, 32, 62, 92}));
        QCOMPARE(m_writer->problems(), QStringList{u"Full."_s});
        m_failure.clear();
        save(u"b"_s, 1); // once this one succeeds there is room for the other
        QTRY_VERIFY(m_writer->isSaved(u"a"_s));
        QCOMPARE(m_writer->problems(), QStringList());
    }

    void theEndWaitsForTheDiskButNotForEver()
    {
        save(u"a"_s, 1);
        save(u"b"_s, 1);
        QCOMPARE(m_writer->finish(50ms), QStringList({u"a couldn't be saved in time."_s, u"b couldn't be saved in time."_s}));
        m_clock.advance(5s);
        QCOMPARE(m_writer->problem(u"a"_s), u"a isn't saved yet: the disk doesn't answer."_s);
        m_disk.release(1);
        const std::unique_ptr<QThread> later(QThread::create([this] {
            QThread::msleep(50);
            m_disk.release(1);
        }));
        later->start();
        QCOMPARE(m_writer->finish(10s), QStringList());
        QCOMPARE(m_done, QStringList({u"a1"_s, u"b1"_s}));
        QVERIFY(later->wait());
    }

    void init()
    {
        m_lane = std::make_unique<ThreadPoolBackground>(1);
        m_writer = std::make_unique<FileWriter>(*m_lane, m_clock);
        m_done.clear();
        m_told.clear();
        m_tries = 0;
        m_failure.clear();
        while (m_disk.try_acquire())
            continue;
    }
    void cleanup()
    {
        m_disk.release(99);
        m_lane.reset();
        m_writer.reset();
    }

private:
    void save(const QString &file, int state)
    {
        const QString name = file + QString::number(state);
        m_writer->write(
            file,
            [this, name, failure = &m_failure]() -> FileWriter::Outcome {
                m_disk.acquire();
                ++m_tries;
                if (!failure->isEmpty())
                    return {FileError{*failure}, {}};
                m_done.append(name);
                return {};
            },
            this, [this, name] { m_told.append(name); });
    }

    FakeClock m_clock;
    std::counting_semaphore<> m_disk{0};
    std::unique_ptr<ThreadPoolBackground> m_lane;
    std::unique_ptr<FileWriter> m_writer;
    QStringList m_done; ///< on the lane, like the next; read here once it rests
    std::atomic<int> m_tries = 0;
    QStringList m_told;
    QString m_failure; ///< set while the lane rests
};

} // namespace velto

static const Registered<velto::FileWriterTest> registered;

#include "FileWriterTest.moc"
