#include "Feeds/Glances/GlanceReading.h"
#include "Platform/Posix/PosixFileTree.h"
#include "RunTests.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <unistd.h>

namespace velto {

using namespace Qt::StringLiterals;

/// What is counted in the Downloads folder, and in what the GitHub CLI prints.
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
        // What was just changed may change again without a trace.
        QVERIFY(!readTransfers(m_tree, m_folder.path(), {}, QDateTime::currentDateTime()).stamp);
        Transfers seen = readTransfers(m_tree, m_folder.path(), {}, m_now);
        QVERIFY(seen.stamp);
        seen.count = 7;
        QCOMPARE(readTransfers(m_tree, m_folder.path(), seen, m_now).count, 7);
        QTest::qSleep(20); // the stamp goes by the tick of the kernel's clock
        seen = readTransfers(m_tree, m_folder.path(), seen, m_now);
        QVERIFY(seen.stillSo()); // not even its stamp need be looked at
        make("b.part");
        QVERIFY(!seen.stillSo());
        seen = readTransfers(m_tree, m_folder.path(), seen, m_now);
        QCOMPARE(seen.count, 2);
        QVERIFY(::unlink((m_folder.path().toUtf8() + "/b.part").constData()) == 0);
        QVERIFY(!seen.stillSo());
        // A folder that isn't there is awaited, unless a link promises it somewhere else.
        const QString awaited = m_folder.filePath(u"not/yet"_s);
        seen = readTransfers(m_tree, awaited, {}, m_now);
        QVERIFY(seen.stillSo());
        QVERIFY(QDir().mkpath(awaited));
        QVERIFY(!seen.stillSo());
        QVERIFY(QFile::link(m_folder.filePath(u"nowhere"_s), m_folder.filePath(u"link"_s)));
        QVERIFY(!readTransfers(m_tree, m_folder.filePath(u"link"_s), {}, m_now).stillSo());
    }

    void readsListingsOfRuns()
    {
        QCOMPARE(parseFailedBuilds(R"([{"databaseId":7700000001},{"databaseId":7700000002}])"), 2);
        QCOMPARE(parseFailedBuilds("[{}" + QByteArray(",{}").repeated(10) + "]"), 10); // of eleven
        for (const char *none : {"[]\n", "", "{}", "null", "[1,2]", "[{},1]", "[{}", "no git repository", "\xff\xfe"})
            QVERIFY2(parseFailedBuilds(none) == 0, none);
    }
};

const Registered<ReadingTest> registered;

} // namespace velto

#include "ReadingTest.moc"
