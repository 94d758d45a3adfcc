#include "Platform/Posix/FilesTesting.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

/// Prints the number of todos each time they are on the disk.
[[noreturn]] void addTodosUntilKilled(const QString &folder)
{
    FaultyCalls calls;
    PosixFiles files(calls);
    ThreadPoolBackground lane(1);
    Desk desk;
    FileWriter writer(lane, desk.clock);
    desk.files = &files;
    desk.places.data = folder;
    desk.quillbox = std::make_unique<QuillboxSource>(QuillboxSource::Needs{desk.clock, desk.machine, desk.client, folder});
    TodosSource source({desk.clock, desk.background, desk.tools, files, writer, desk.places, *desk.quillbox});
    for (;;) {
        source.save(makeTodo(0, u"todo"_s, Desk::kToday));
        writer.finish(std::chrono::hours(1));
        std::printf("%d\n", int(source.todos().size()));
        std::fflush(stdout);
    }
}

class NativeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>(scratchTemplate());
        m_path = m_folder->filePath(u"Velto/todos.json"_s);
        m_desk = std::make_unique<Desk>();
        m_desk->files = &m_files;
        m_desk->places.data = m_folder->filePath(u"Velto"_s);
    }

    void theFileIsPrivateAndInAFolderOfItsOwn()
    {
        m_desk->start().save(makeTodo(0, u"a"_s, Desk::kToday));
        QCOMPARE(modeOf(m_path), 0600);
        QCOMPARE(modeOf(m_desk->places.data), 0700);
        QCOMPARE(filesIn(m_desk->places.data), QStringList{u"todos.json"_s});
        m_desk->start();
        QCOMPARE(m_desk->shown(), QStringList({u"[No project]"_s, u"a"_s}));
    }

    void aDamagedFileIsCopiedOnceBeforeItIsReplaced()
    {
        for (const QByteArray &bytes :
             {encodeTodos({makeTodo(1, u"precious"_s)}).chopped(5), QByteArray(R"([{"id":1,"title":"precious"}])"),
              QByteArray(4096, '\0'), QByteArray(200'000, '[')}) {
            init();
            m_files.replace(m_path, bytes);
            const QString copy = m_path + u".kept-2026-11-21T09-00-00Z"_s;
            m_files.replace(copy, "an older copy");
            TodosSource &source = m_desk->start();
            QVERIFY(source.todos().isEmpty());
            source.refresh();
            m_desk->wait(3s);
            QVERIFY(source.storeNote().startsWith(u"todos.json can't be made out"_s));
            QCOMPARE(readFile(m_path), bytes); // nothing happens to it before there is something to save
            m_desk->clock.setWallTime(QDateTime(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC));
            source.save(makeTodo(0, u"a"_s));
            source.save(makeTodo(0, u"b"_s));
            QCOMPARE(readFile(copy), QByteArray("an older copy"));
            QCOMPARE(readFile(copy + u"-2"_s), bytes);
            QCOMPARE(modeOf(copy + u"-2"_s), 0600);
            QCOMPARE(filesIn(m_desk->places.data).size(), 3);
            QCOMPARE(titlesOf(decodeTodos(readFile(m_path)).value()), QStringList({u"a"_s, u"b"_s}));
        }
    }

    void whatAnotherProgramWroteIsTakenInOrCopied()
    {
        TodosSource &source = m_desk->start();
        source.save(makeTodo(0, u"a"_s));
        const QByteArray foreign = encodeTodos({makeTodo(5, u"foreign"_s), makeTodo(6, u"done"_s)});
        writeFile(m_path, foreign);
        QTRY_VERIFY(m_desk->clock.pendingTimers() > 1); // the file is watched
        m_desk->wait(1s);
        QCOMPARE(titlesOf(source.todos()), QStringList({u"foreign"_s, u"done"_s}));
        source.finish(u"6"_s);
        writeFile(m_path, foreign.left(foreign.size() / 2)); // only half of it, so far
        source.refresh();
        QCOMPARE(source.storeNote(), QString());
        writeFile(m_path, encodeTodos({makeTodo(5, u"again"_s), makeTodo(6, u"done"_s)}));
        m_desk->wait(2s);
        QCOMPARE(titlesOf(source.todos()), QStringList{u"again"_s}); // the done one is still within its five seconds
        source.undoDone();
        writeFile(m_path, "[");
        m_desk->wait(0s);
        source.refresh();
        m_desk->wait(3s);
        QVERIFY(source.storeNote().startsWith(u"Another program changed todos.json"_s));
        QCOMPARE(titlesOf(source.todos()), QStringList({u"again"_s, u"done"_s}));

        // The next change is saved before anyone has looked.
        writeFile(m_path, foreign);
        source.save(makeTodo(0, u"b"_s));
        const QStringList copies = filesIn(m_desk->places.data, u"todos.json.kept-*"_s);
        QCOMPARE(copies.size(), 1);
        QCOMPARE(readFile(m_desk->places.data + u'/' + copies.front()), foreign);
        QVERIFY(source.storeNote().contains(copies.front()));
        source.pressStoreNote();
        QCOMPARE(source.storeNote(), QString());

        // Deleted, and not replaced soon after.
        QFile::remove(m_path);
        source.refresh();
        QVERIFY(!QFile::exists(m_path));
        m_desk->wait(3s);
        QCOMPARE(titlesOf(decodeTodos(readFile(m_path)).value()), titlesOf(source.todos()));
        QVERIFY(source.storeNote().startsWith(u"todos.json was gone"_s));
    }

    void theListOfAnotherStoreIsNotWrittenOverTheFile()
    {
        m_files.replace(m_path, encodeTodos({makeTodo(1, u"mine"_s), makeTodo(2, u"done"_s)}));
        TodosSource &source = m_desk->start();
        source.finish(u"2"_s); // goes to the store that it was taken from
        m_desk->mode = QuillboxMode::hub(QUrl(u"http://127.0.0.1:1"_s), u"t"_s);
        m_desk->quillbox->reconnect();
        QVERIFY(!source.pendingDone());
        QCOMPARE(titlesOf(decodeTodos(readFile(m_path)).value()), QStringList{u"mine"_s});
        m_desk->mode = {};
        m_desk->quillbox->reconnect();
        source.save(makeTodo(0, u"b"_s));
        QCOMPARE(filesIn(m_desk->places.data, u"todos.json.kept-*"_s).size(), 1);
    }

    void whatCannotBeReadIsNotReplaced()
    {
        QDir(m_folder->path()).mkpath(u"Velto/todos.json"_s);
        TodosSource &source = m_desk->start();
        source.save(makeTodo(0, u"a"_s));
        QVERIFY(QFileInfo(m_path).isDir());
        QCOMPARE(titlesOf(source.todos()), QStringList{u"a"_s});
        QDir().rmdir(m_path);
        source.addComment(u"1"_s, u"c"_s);
        QCOMPARE(titlesOf(decodeTodos(readFile(m_path)).value()), QStringList{u"a"_s});
    }

    void eachFailingStepLeavesTheOldListOrTheNewOne()
    {
        failAtEachStep(ENOSPC, encodeTodos({makeTodo(1, u"old"_s)}));
        failAtEachStep(ENOSPC, "[damaged");
        failAtEachStep(EIO, "[damaged");
    }

    void aKillAtAnyMomentLosesNoTodo()
    {
        const int kills = qEnvironmentVariable("VELTO_KILLS", u"20"_s).toInt();
        killAtAnyMoment({u"--add-until-killed"_s, m_desk->places.data}, kills, [this] {
            const auto stored = decodeTodos(readFile(m_path));
            return stored ? int(stored->size()) : -1;
        });
        QCOMPARE(filesIn(m_desk->places.data, u"*.kept-*"_s), QStringList());
    }

private:
    void failAtEachStep(int error, const QByteArray &before)
    {
        int refused = 0;
        for (int step = 1;; ++step) {
            init();
            m_files.replace(m_path, before);
            FaultyCalls calls;
            PosixFiles files(calls);
            m_desk->files = &files;
            TodosSource &source = m_desk->start();
            calls.steps = 0;
            calls.failAt = step;
            calls.error = error;
            source.save(makeTodo(0, u"new"_s));
            const bool wasWhole = decodeTodos(before).has_value();
            const QByteArray all = encodeTodos(source.todos());
            QCOMPARE(titlesOf(source.todos()), wasWhole ? QStringList({u"old"_s, u"new"_s}) : QStringList{u"new"_s});
            const QByteArray now = readFile(m_path);
            QVERIFY2(now == before || now == all, now.constData());
            refused += now == before;
            // Once the file is replaced, its old content is kept somewhere else.
            if (now == all && !wasWhole) {
                const QStringList copies = filesIn(m_desk->places.data, u"todos.json.kept-*"_s);
                QVERIFY(!copies.isEmpty());
                QCOMPARE(readFile(m_desk->places.data + u'/' + copies.front()), before);
            }
            if (calls.steps < step)
                break;
            // The disk works again, and the next change saves everything.
            source.addComment(QString::number(source.todos().back().id), u"c"_s);
            QCOMPARE(readFile(m_path), encodeTodos(source.todos()));
        }
        QVERIFY(refused >= 8); // otherwise no fault hit anything
    }

    PosixFiles m_files;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Desk> m_desk;
    QString m_path;
};

} // namespace velto

static const Registered<velto::NativeTest> registered;

#include "NativeTest.moc"
