#include "Platform/Posix/PosixFiles.h"
#include "FilesTesting.h"
#include "RunTests.h"

#include <QTemporaryDir>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QByteArray kOld = "what was there before";
const QByteArray kNew = QByteArray("what is to be there. ").repeated(20000);
constexpr qint64 kPlenty = 1 << 20;

QByteArray contentOf(const std::variant<QByteArray, FileError> &result)
{
    const auto *bytes = std::get_if<QByteArray>(&result);
    return bytes ? *bytes : QByteArray("error: ") + std::get<FileError>(result).message.toUtf8();
}

} // namespace

class PosixFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"file.json"_s);
    }

    void eachFailingStepLeavesTheOldFileOrTheNewOne()
    {
        failAtEachStep("existing"_L1, ENOSPC);
        failAtEachStep("missing folder"_L1, EIO);
        failAtEachStep("link"_L1, EDQUOT);
    }

    void shortWritesAndInterruptionsChangeNothing()
    {
        writeFile(m_path, kOld);
        FaultyCalls calls;
        calls.interrupted = true;
        calls.longestWrite = 1000;
        PosixFiles files(calls);
        QVERIFY(!files.replace(m_path, kNew));
        QCOMPARE(contentOf(files.read(m_path, kPlenty)), kNew);
    }

    void linksAreFollowedAndStay()
    {
        QDir(m_folder->path()).mkpath(u"dotfiles/deep"_s);
        const QString target = m_folder->filePath(u"dotfiles/file.json"_s);
        const QString first = m_folder->filePath(u"first"_s);
        QFile::link(u"dotfiles/deep/second"_s, first);
        QFile::link(u"../file.json"_s, m_folder->filePath(u"dotfiles/deep/second"_s));
        PosixFiles files;
        for (const QByteArray &bytes : {kOld, kNew}) { // first a dangling chain, then one that ends in a file
            QVERIFY(!files.replace(first, bytes));
            QVERIFY(QFileInfo(first).isSymLink());
            QVERIFY(!QFileInfo(target).isSymLink());
            QCOMPARE(readFile(target), bytes);
        }
        QCOMPARE(filesIn(m_folder->filePath(u"dotfiles/deep"_s)), QStringList{u"second"_s});

        QFile::link(u"round"_s, m_folder->filePath(u"about"_s));
        QFile::link(u"about"_s, m_folder->filePath(u"round"_s));
        const auto loop = files.replace(m_folder->filePath(u"round"_s), kNew);
        QVERIFY(loop);
        QCOMPARE(loop->message, u"round can't be written: Too many levels of symbolic links."_s);
    }

    void modesAreKeptAndNewFilesArePrivate()
    {
        PosixFiles files;
        writeFile(m_path, kOld, 0664);
        QVERIFY(!files.replace(m_path, kNew));
        QCOMPARE(modeOf(m_path), 0664);

        const mode_t mask = ::umask(0);
        const auto result = files.replace(m_folder->filePath(u"x/y/new"_s), kNew);
        ::umask(mask);
        QVERIFY(!result);
        QCOMPARE(modeOf(m_folder->filePath(u"x"_s)), 0700);
        QCOMPARE(modeOf(m_folder->filePath(u"x/y"_s)), 0700);
        QCOMPARE(modeOf(m_folder->filePath(u"x/y/new"_s)), 0600);

        const QString readOnly = m_folder->filePath(u"read-only"_s);
        writeFile(readOnly, kOld, 0444);
        const auto refusal = files.replace(readOnly, kNew);
        QVERIFY(refusal);
        QCOMPARE(refusal->message, u"read-only can't be written: Permission denied."_s);
        QCOMPARE(readFile(readOnly), kOld);
    }

    void whatAKillLeftIsSweptAndNoWriteUnderWay()
    {
        const QString folder = QFileInfo(m_path).path();
        writeFile(folder + u"/.velto-0a.tmp"_s, "left");
        writeFile(folder + u"/.velto-notes"_s, "the user's");
        PosixFiles files;
        QVERIFY(files.replace(m_path, kNew, [] { return false; })); // nor one that is no longer wanted
        QVERIFY(!QFile::exists(m_path));
        QVERIFY(!files.replace(m_path, kNew, [&] {
            files.sweep(m_path);
            return true;
        }));
        QCOMPARE(readFile(m_path), kNew);
        QCOMPARE(filesIn(folder), QStringList({u".velto-notes"_s, QFileInfo(m_path).fileName()}));
    }

    void readingIsBoundedAndNeverWaits()
    {
        PosixFiles files;
        writeFile(m_path, QByteArray(200000, 'x'));
        QCOMPARE(contentOf(files.read(m_path, 200000)), QByteArray(200000, 'x'));
        QCOMPARE(contentOf(files.read(m_path, 199999)), QByteArray("error: file.json can't be read: File too large."));
        QCOMPARE(contentOf(files.read(m_folder->path() + u"/."_s, kPlenty)),
                 QByteArray("error: . can't be read: Is a directory."));
        const QString pipe = m_folder->filePath(u"pipe"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(std::holds_alternative<FileError>(files.read(pipe, kPlenty)));
        QVERIFY(files.replace(pipe, kNew));

        const auto missing = files.read(m_folder->filePath(u"none"_s), kPlenty);
        QVERIFY(std::get<FileError>(missing).missing);
        QVERIFY(!std::get<FileError>(files.read(m_folder->path(), kPlenty)).missing);
        for (int step = 1; step <= 4; ++step) { // open, fstat, read, read to the end
            FaultyCalls calls;
            calls.failAt = step;
            const auto result = PosixFiles(calls).read(m_path, kPlenty);
            QVERIFY(std::holds_alternative<FileError>(result));
            QVERIFY(!std::get<FileError>(result).missing);
        }
    }

private:
    static void failAtEachStep(QLatin1StringView scene, int error)
    {
        int refused = 0;
        for (int step = 1;; ++step) {
            QTemporaryDir folder;
            const bool isNew = scene == "missing folder"_L1;
            const QString path = folder.filePath(isNew ? u"a/b/file.json"_s : u"file.json"_s);
            if (!isNew)
                writeFile(path, kOld, 0640);
            const QString link = folder.filePath(u"link"_s);
            QFile::link(u"file.json"_s, link);

            FaultyCalls calls;
            calls.failAt = step;
            calls.error = error;
            calls.longestWrite = std::size_t(kNew.size() / 3);
            PosixFiles files(calls);
            const auto result = files.replace(scene == "link"_L1 ? link : path, kNew);

            const QByteArray before = isNew ? QByteArray() : kOld;
            QCOMPARE(readFile(path), result ? before : kNew);
            QCOMPARE(modeOf(path), !isNew ? 0640 : result ? -1 : 0600);
            QVERIFY(QFileInfo(link).isSymLink());
            QCOMPARE(filesIn(QFileInfo(path).path(), u".velto-*"_s), QStringList());
            if (result)
                QVERIFY2(result->message.contains(qt_error_string(error)), qPrintable(result->message));
            // No failed call is ignored, whether or not it did harm this time.
            if (!isNew)
                QCOMPARE(result.has_value(), calls.failedBeforeRename);
            refused += result ? 1 : 0;
            if (calls.steps < step) {
                QVERIFY(!result);
                break;
            }
        }
        QVERIFY(refused >= 8); // otherwise no fault hit anything
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

static const Registered<PosixFilesTest> registered;

#include "PosixFilesTest.moc"
