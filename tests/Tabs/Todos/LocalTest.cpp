#include "Fixture.h"
#include "Platform/Posix/FilesTesting.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

namespace {

/// Gives tools no more time than a test has.
class HastyRunner final : public ToolRunner {
public:
    using ToolRunner::run;
    RunResult run(const QStringList &args, const QString &cwd, std::chrono::duration<double> timeout,
                  const ToolEnvironment &environment) override
    {
        const bool hangs = args.contains(u"--title=hang"_s);
        return m_runner.run(args, cwd, hangs ? std::chrono::duration<double>(0.3) : timeout, environment);
    }
    bool toolInstalled(const QString &name) const override { return m_runner.toolInstalled(name); }

private:
    PosixToolRunner m_runner{{u"/usr/bin"_s, u"/bin"_s}};
};

} // namespace

/// The todos of a Quillbox on this machine, with the real `sqlite3` and a stand-in for its tool.
class LocalTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>(scratchTemplate());
        QDir(m_home->path()).mkpath(u"src/quillbox/todo"_s);
        writeFile(m_home->filePath(u"src/quillbox/todo/todo.py"_s), fixture("todos/todo.py"));
        sql("CREATE TABLE quillbox_memory(id INTEGER PRIMARY KEY, type TEXT, name TEXT, body TEXT, tags TEXT, archived_at TEXT)");
        sql("INSERT INTO quillbox_memory VALUES"
            "(1,'todo','first','text\n\n## Comments\n- Mon · said','[\"due:2026-11-21\",\"prio:1\"]',NULL),"
            "(2,'todo','it''s “odd” %1','','[\"due:2026-11-21\"]',NULL),"
            "(3,'todo','done','','[\"status:done\"]',NULL),"
            "(4,'todo','archived','','[]','2026-01-01'),"
            "(5,'note','no todo','','[]',NULL),"
            "(6,'todo','broken','','nonsense',NULL)");
        m_desk = std::make_unique<Desk>();
        m_desk->files = &m_files;
        m_desk->runner = &m_runner;
        m_desk->places.home = m_home->path();
        m_desk->mode = QuillboxMode::local(m_home->filePath(u"src/quillbox"_s));
    }

    void theDatabaseIsReadAndWatched()
    {
        TodosSource &source = m_desk->start();
        QVERIFY(source.canEdit() && source.canAdd());
        m_desk->wait(2s);
        m_desk->background.finishAll();
        QCOMPARE(titlesOf(source.shown()->flat()), QStringList({u"first"_s, u"it's “odd” %1"_s}));
        QCOMPARE(source.todos().value(0).comments, (QList<Comment>{{u"Mon"_s, u"said"_s}}));
        m_desk->wait(60s);
        QCOMPARE(m_desk->background.pending(), 0); // the file hasn't changed

        sql("INSERT INTO quillbox_memory VALUES (7,'todo','new','','[]',NULL)");
        touch(1);
        m_desk->wait(2s);
        QCOMPARE(m_desk->background.pending(), 1);
        m_desk->background.finishAll();
        QCOMPARE(source.todos().size(), 3);

        QFile::remove(m_home->filePath(u"src/quillbox/quillbox.db"_s));
        m_desk->wait(2s);
        m_desk->background.finishAll();
        QVERIFY(source.todos().isEmpty());
        QCOMPARE(source.errorText(), QString());
        QCOMPARE(source.shown()->emptyText(), u"No open todos."_s);
    }

    void aDatabaseThatCannotBeReadKeepsTheLastList()
    {
        TodosSource &source = loaded();
        const QByteArray good = readFile(m_home->filePath(u"src/quillbox/quillbox.db"_s));
        writeFile(m_home->filePath(u"src/quillbox/quillbox.db"_s), QByteArray(5000, 'x'));
        touch(1);
        m_desk->wait(2s);
        m_desk->background.finishAll();
        QCOMPARE(source.todos().size(), 2);
        QVERIFY2(source.storeNote().startsWith(u"Couldn't read the todos of Quillbox ("_s), qPrintable(source.storeNote()));
        QVERIFY(source.storeNote().contains(u"not a database"_s));
        writeFile(m_home->filePath(u"src/quillbox/quillbox.db"_s), good);
        m_desk->wait(2s); // whatever its modification time says
        m_desk->background.finishAll();
        QCOMPARE(source.storeNote(), QString());
    }

    void theToolIsToldEachChangeInTurn()
    {
        TodosSource &source = loaded();
        Todo odd = makeTodo(0, u"a 'b' $(c) --d"_s, Desk::kToday, 3, u"p"_s);
        odd.details = u"two\nlines"_s;
        source.save(odd);
        source.save(makeTodo(2, u"e"_s));
        source.comment(source.todos().value(0), u" hi -- "_s);
        source.comment(source.todos().value(0), u"\t"_s);
        QCOMPARE(m_desk->background.pending(), 1); // one after the other
        source.finish(u"1"_s);
        m_desk->wait(5s);
        m_desk->background.finishAll();
        const QByteArrayList told = readFile(m_home->filePath(u"src/quillbox/todo/told.txt"_s)).trimmed().split('\n');
        QCOMPARE(told,
                 QByteArrayList({
                     R"(["add", "--title=a 'b' $(c) --d", "--body=two\nlines", "--due=2026-11-21", "--who=me", )"
                     R"("--project=p", "--scope=office", "--prio=3"])",
                     R"(["edit", "2", "--title=e", "--body=", "--due=", "--who=me", "--project=", "--scope=office", "--prio=2"])",
                     R"(["comment", "1", " hi -- "])",
                     R"(["done", "1"])",
                 }));
        QCOMPARE(source.errorText(), QString());
        QCOMPARE(titlesOf(source.todos()), QStringList({u"it's “odd” %1"_s, u"a 'b' $(c) --d"_s}));
    }

    void aToolThatFailsIsToldOf()
    {
        for (const auto &[title, details] : std::initializer_list<std::tuple<QString, QString>>{
                 {u"fail"_s, u"ValueError: no such project"_s},
                 {u"silent"_s, u"no details"_s},
                 {u"hang"_s, u"timed out after 0 s"_s},
                 {u"rubbish"_s, QString(200, QChar::ReplacementCharacter) + u'…'}}) {
            init();
            TodosSource &source = loaded();
            source.newDraft();
            source.form()->setTitle(title);
            source.form()->save();
            QVERIFY(!source.form()->shown());
            m_desk->background.finishAll();
            QCOMPARE(source.errorText(), u"Couldn't save that change to Quillbox (%1). Your list was reloaded."_s.arg(details));
            QCOMPARE(source.todos().size(), 2);
            source.save(makeTodo(0, u"fine"_s));
            QCOMPARE(source.errorText(), QString());
        }
        init();
        TodosSource &source = loaded();
        QFile::remove(m_home->filePath(u"src/quillbox/todo/todo.py"_s));
        source.finish(u"1"_s); // comes back
        QCOMPARE(source.todos().size(), 1);
        m_desk->wait(5s);
        m_desk->background.finishAll();
        QCOMPARE(source.todos().size(), 2);
        QVERIFY(source.errorText().startsWith(u"Couldn't save that change to Quillbox ("_s));
    }

    void anOlderToolOnlyMarksDone()
    {
        const QString path = m_home->filePath(u"src/quillbox/todo/todo.py"_s);
        for (const auto &[script, patched] : {std::pair("def done(id): pass", false),
                                              {"def comment(id): pass", true},
                                              {"def comment(id): '\xff'", false},
                                              {"", false}}) {
            QFile::remove(path);
            if (*script)
                writeFile(path, script);
            const TodosSource &source = m_desk->start();
            QCOMPARE(source.canEdit(), patched);
            QCOMPARE(source.canAdd(), patched);
            QCOMPARE(source.readOnlyNote().isEmpty(), patched);
        }
    }

private:
    TodosSource &loaded()
    {
        m_desk->start().refresh();
        m_desk->background.finishAll();
        return *m_desk->source;
    }
    void sql(const QByteArray &statement)
    {
        QProcess sqlite;
        sqlite.start(u"sqlite3"_s, {m_home->filePath(u"src/quillbox/quillbox.db"_s), QString::fromUtf8(statement)});
        QVERIFY2(sqlite.waitForFinished() && sqlite.exitCode() == 0, sqlite.readAllStandardError().constData());
    }
    /// Two changes within a test may fall into one tick of the file system's clock.
    void touch(int seconds)
    {
        QFile database(m_home->filePath(u"src/quillbox/quillbox.db"_s));
        QVERIFY(database.open(QIODevice::ReadWrite));
        const QDateTime now = database.fileTime(QFile::FileModificationTime);
        QVERIFY(database.setFileTime(now.addSecs(seconds), QFile::FileModificationTime));
    }

    PosixFiles m_files;
    HastyRunner m_runner;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<Desk> m_desk;
};

} // namespace velto

static const Registered<velto::LocalTest> registered;

#include "LocalTest.moc"
