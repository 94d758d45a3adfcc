#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"

#include <QTest>
#include <atomic>

using namespace std::chrono_literals;

namespace velto {

class BackgroundTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// A tool that hangs keeps one thread, and the others go on.
    void asManyJobsRunAtOnceAsThereAreThreads()
    {
        constexpr int kThreads = 4;
        std::atomic<int> running = 0;
        std::atomic<int> most = 0;
        int done = 0;
        ThreadPoolBackground pool(kThreads);
        pool.hold();
        for (int job = 0; job < 3 * kThreads; ++job) {
            pool.start(
                [&] {
                    const int now = ++running;
                    for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) { }
                    for (const auto end = std::chrono::steady_clock::now() + 5s;
                         most < kThreads && std::chrono::steady_clock::now() < end;)
                        std::this_thread::sleep_for(1ms);
                    --running;
                },
                [&] { ++done; });
        }
        QTest::qWait(20);
        QCOMPARE(most, 0);
        pool.release();
        QTRY_COMPARE(done, 3 * kThreads);
        QCOMPARE(most, kThreads);
        pool.start([] {}, [&] { ++done; }); // by a thread that waits
        QTRY_COMPARE(done, 3 * kThreads + 1);
    }
    /// It may be the removal of a secret.
    void theEndCompletesWhatWasHandedOver()
    {
        QList<int> order;
        bool told = false;
        {
            ThreadPoolBackground pool(1);
            pool.hold();
            for (int job = 0; job < 5; ++job)
                pool.start([&order, job] { order.append(job); }, [&told] { told = true; });
        }
        QCOMPARE(order, QList({0, 1, 2, 3, 4}));
        QCoreApplication::processEvents();
        QVERIFY(!told); // whoever would hear of it is gone
    }
};

} // namespace velto

static const Registered<velto::BackgroundTest> registered;

#include "BackgroundTest.moc"
