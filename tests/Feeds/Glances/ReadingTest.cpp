#include "Feeds/Glances/GlanceReading.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Posix/PosixFileTree.h"
#include "RunTests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velto {

using namespace Qt::StringLiterals;

/// What is in the Downloads folder, and what the GitHub CLI prints.
class ReadingTest : public QObject {
    Q_OBJECT
    PosixFileTree m_tree;
    QTemporaryDir m_folder;
    QDateTime m_now = QDateTime::currentDateTime().addSecs(60);

    void make(const QByteArray &name)
    {
        const int file = ::open((m_folder.path().toUtf8() + '/' + name).constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        QVERIFY2(file >= 0, name.constData());
        ::close(file);
    }

private Q_SLOTS:
    void init() { m_folder = QTemporaryDir(); }

    void countsUnfinishedDownloads()
    {
        for (const auto *name : {"a.part", "b.PART", "c.tar.crdownload", "d.Download", ".hidden.part", "\xff\xfe.part"})
            make(name);
        for (const auto *name : {"part", ".part", "a.partial", "b.part.zip", "c.", "d.downloads", "part.txt"})
            make(name);
        QVERIFY(QDir(m_folder.path()).mkpath(u"folder.part/inner.part"_s));
        QCOMPARE(readTransfers(m_tree, m_folder.path(), {}, m_now).count, 7);
        QCOMPARE(readTransfers(m_tree, m_folder.filePath(u"none"_s), {}, m_now).count, 0);
        QCOMPARE(readTransfers(m_tree, m_folder.filePath(u"a.part"_s), {}, m_now).count, 0);
        QCOMPARE(readTransfers(m_tree, {}, {}, m_now).count, 0);
    }

    void folderThatRestsIsNotListedAgain()
    {
        make("a.part");
        // A folder changed just now may change again without a new timestamp.
        QVERIFY(!readTransfers(m_tree, m_folder.path(), {}, QDateTime::currentDateTime()).stamp);
        Transfers seen = readTransfers(m_tree, m_folder.path(), {}, m_now);
        QVERIFY(seen.stamp);
        seen.count = 7;
        QCOMPARE(readTransfers(m_tree, m_folder.path(), seen, m_now).count, 7);
        QTest::qSleep(20); // timestamps follow the kernel's clock tick
        seen = readTransfers(m_tree, m_folder.path(), seen, m_now);
        QVERIFY(seen.stillSo()); // not even its timestamp needs to be read
        make("b.part");
        QVERIFY(!seen.stillSo());
        seen = readTransfers(m_tree, m_folder.path(), seen, m_now);
        QCOMPARE(seen.count, 2);
        QVERIFY(::unlink((m_folder.path().toUtf8() + "/b.part").constData()) == 0);
        QVERIFY(!seen.stillSo());
        QVERIFY(!readTransfers(m_tree, m_folder.filePath(u"none"_s), {}, m_now).stillSo());
    }

    void readsListingsOfRuns()
    {
        QCOMPARE(parseFailedBuilds(R"([{"databaseId":7700000001},{"databaseId":7700000002}])"), 2);
        QCOMPARE(parseFailedBuilds("[{}" + QByteArray(",{}").repeated(10) + "]"), 10); // out of eleven
        for (const char *none : {"[]\n", "", "{}", "null", "[1,2]", "[{},1]", "[{}", "no git repository", "\xff\xfe"})
            QVERIFY2(parseFailedBuilds(none) == 0, none);
    }

    void failureOfTheToolCountsAsNone()
    {
        FakeToolRunner tools;
        QCOMPARE(readFailedBuilds(tools), std::optional(0));
        QVERIFY(tools.ran.isEmpty());
        tools.installed.insert(u"gh"_s);
        const auto line = u"gh run list --status failure --limit 10 --json databaseId"_s;
        tools.answers.insert(line, {false, "[{}]", u"failed to determine base repo"_s});
        QCOMPARE(readFailedBuilds(tools), std::nullopt);
        QCOMPARE(tools.ran, QStringList{line});
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
