#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

/// Changes to the list that Velto itself stores.
class EditingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void numbersAreNotGivenTwice()
    {
        Desk desk;
        TodosSource &source = desk.start();
        source.save(makeTodo(0, u"first"_s));
        QCOMPARE(source.todos().value(0).id, 1);
        desk.start({makeTodo(3, u"c"_s), makeTodo(7, u"g"_s)});
        Todo fresh = makeTodo(0, u"new"_s);
        fresh.comments = {{u"x"_s, u"y"_s}};
        desk.source->save(fresh);
        QCOMPARE(desk.source->todos().value(2), makeTodo(8, u"new"_s));
        // The id of a todo that may come back is taken too.
        desk.source->done(makeTodo(8, u"new"_s));
        desk.source->save(makeTodo(0, u"newer"_s));
        QCOMPARE(desk.source->todos().back().id, 9);
        desk.source->save(makeTodo(std::numeric_limits<qint64>::max(), u"last"_s));
        desk.source->save(makeTodo(0, u"beyond"_s));
        QCOMPARE(desk.source->todos().back().id, 1);
        // A todo that is gone by now can be restored all the same.
        desk.start({makeTodo(1, u"a"_s)});
        desk.changes->clear();
        desk.source->done(makeTodo(77, u"gone"_s));
        QCOMPARE(desk.changes->count(), 1);
        QCOMPARE(desk.source->undoText(), u"Done: gone"_s);
    }

    void anEditKeepsWhatElseChangedMeanwhile()
    {
        Desk desk;
        Todo talked = makeTodo(1, u"a"_s);
        talked.comments = {{u"now"_s, u"said"_s}};
        talked.unknown = R"("colour":"red")";
        TodosSource &source = desk.start({talked, makeTodo(2, u"b"_s)});
        source.edit(u"1"_s);
        QVERIFY(source.form()->more());
        QCOMPARE(source.form()->saveText(), u"Save"_s);
        source.form()->setTitle(u"changed"_s);
        source.addComment(u"1"_s, u"while the form is open"_s);
        talked.comments = source.todos().value(0).comments;
        QCOMPARE(talked.comments.size(), 2);
        source.form()->save();
        talked.title = u"changed"_s;
        QCOMPARE(source.todos(), QList({talked, makeTodo(2, u"b"_s)}));
        QCOMPARE(desk.inFile(), source.todos());
    }

    void whatIsBeingTypedOutlivesTheProgram()
    {
        Desk desk;
        const Todo old = makeTodo(7, u"old"_s, Desk::kToday);
        for (const bool isNew : {true, false}) {
            TodosSource &first = desk.start({old});
            if (isNew)
                first.newDraft();
            else
                first.edit(u"7"_s);
            first.form()->setTitle(u"half a tho"_s);
            first.form()->setDetails(u"why"_s);
            first.form()->setHasDate(true);
            first.form()->date()->moveDays(3);
            first.shown()->typeComment(u"7"_s, u"half a comment"_s);
            desk.wait(1s);
            TodosSource &second = desk.start();
            QCOMPARE(desk.role(1, TodoRows::CommentText), u"half a comment"_s);
            QVERIFY(second.form()->shown() && second.form()->more());
            QVERIFY(!second.unfinished()); // the panel may close
            second.form()->setTitle(u"half a thought"_s);
            QVERIFY(second.unfinished());
            const QString due = textOf(second.form()->date()->date());
            QVERIFY(due != Desk::kToday);
            second.shown()->typeComment(u"7"_s, {});
            QCOMPARE(desk.writer.finish(1s), QStringList()); // no second passes
            TodosSource &third = desk.start();
            QCOMPARE(desk.role(1, TodoRows::CommentText), QString());
            third.form()->save();
            const Todo saved = isNew ? third.todos().value(1) : third.todos().value(0);
            QCOMPARE(saved.title + saved.details + saved.due, u"half a thoughtwhy"_s + due);
            QVERIFY(!desk.start().form()->shown());
        }
        TodosSource &renaming = desk.start({old});
        renaming.shown()->typeComment(u"7"_s, u"still"_s);
        renaming.edit(u"7"_s);
        renaming.form()->setTitle(u"renamed"_s);
        renaming.form()->save();
        desk.wait(1s);
        desk.start();
        QCOMPARE(desk.role(1, TodoRows::CommentText), u"still"_s);
        // Its todo may come back, but not for ever.
        for (const int days : {0, 31}) {
            desk.wait(days * 24h);
            desk.start({old});
            desk.wait(1s);
            QCOMPARE(desk.fakeFiles.contents.value(desk.places.data + u"/comments.json"_s).contains("still"), days == 0);
        }

        const QString file = desk.places.data + u"/draft.json"_s;
        desk.fakeFiles.contents.insert(file, "[{\"title\":\"cut o");
        desk.start({old}).newDraft();
        desk.source->form()->setTitle(u"next"_s);
        desk.wait(1s);
        QCOMPARE(desk.fakeFiles.contents.values().count("[{\"title\":\"cut o"), 1);
        QVERIFY(desk.writer.word(file).startsWith("draft.json couldn't be made out. It is kept as draft.json.damaged-"_L1));
    }

    void commentsAreStampedAndKeptAsTyped()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s, Desk::kToday)});
        source.shown()->press(u"1"_s);
        source.shown()->typeComment(u"1"_s, u" hello "_s);
        QCOMPARE(desk.role(1, TodoRows::CommentText), u" hello "_s);
        source.addComment(u"1"_s, u" hello "_s);
        QCOMPARE(desk.role(1, TodoRows::CommentText), QString());
        QCOMPARE(desk.role(1, TodoRows::CommentCount), u"1"_s);
        const QList<Comment> expected{{u"Nov 21, 2026, 9:00 AM"_s, u" hello "_s}};
        Comment stored = desk.inFile().value(0).comments.value(0);
        stored.at.replace(QChar(0x202F), u' ');
        QCOMPARE(stored, expected.value(0));
        source.addComment(u"1"_s, u"  \t"_s);
        source.addComment(u"9"_s, u"to nobody"_s);
        source.comment(makeTodo(9, u"gone"_s), u"to nobody"_s);
        QCOMPARE(source.todos().value(0).comments.size(), 1);
        QVERIFY(desk.tools.ran.isEmpty());
        QCOMPARE(desk.background.pending(), 0);
    }

    void aDoneTodoCanBeHadBackForFiveSeconds()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s, Desk::kToday), makeTodo(2, u"b"_s, Desk::kToday)});
        source.finish(u"1"_s);
        QCOMPARE(source.undoText(), u"Done: a"_s);
        QCOMPARE(source.badge(), 1);
        desk.wait(4999ms);
        QCOMPARE(titlesOf(desk.inFile()), QStringList({u"a"_s, u"b"_s}));
        source.undoDone();
        QCOMPARE(source.undoText(), QString());
        desk.wait(10s);
        QCOMPARE(titlesOf(source.todos()), QStringList({u"b"_s, u"a"_s}));

        source.finish(u"1"_s);
        desk.wait(5s);
        QVERIFY(!source.pendingDone());
        QCOMPARE(titlesOf(desk.inFile()), QStringList{u"b"_s});
        source.undoDone();
        QCOMPARE(titlesOf(source.todos()), QStringList{u"b"_s});

        desk.start({makeTodo(1, u"a"_s), makeTodo(2, u"b"_s), makeTodo(3, u"c"_s)});
        desk.source->finish(u"1"_s);
        desk.wait(3s);
        desk.source->finish(u"2"_s); // makes the first one final
        desk.wait(4s);
        QCOMPARE(desk.source->undoText(), u"Done: b"_s);
        desk.source->undoDone();
        desk.wait(5s);
        QCOMPARE(titlesOf(desk.source->todos()), QStringList({u"c"_s, u"b"_s}));
    }

    void whatMayComeBackStaysInTheFile()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s), makeTodo(2, u"b"_s)});
        source.finish(u"1"_s);
        source.save(makeTodo(0, u"new"_s));
        QCOMPARE(titlesOf(desk.inFile()), QStringList({u"b"_s, u"new"_s, u"a"_s})); // the program may end now
        source.undoDone();
        QCOMPARE(titlesOf(source.todos()), QStringList({u"b"_s, u"new"_s, u"a"_s}));
        source.finish(u"1"_s);
        source.save(makeTodo(1, u"a, edited meanwhile"_s));
        source.undoDone();
        desk.wait(5s);
        QCOMPARE(titlesOf(source.todos()), QStringList({u"b"_s, u"new"_s, u"a, edited meanwhile"_s}));
    }

    void aFailedWriteKeepsTheListAndTheNextOneBringsAll()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s)});
        desk.fakeFiles.failure = u"No space left on device"_s;
        source.save(makeTodo(0, u"b"_s));
        QCOMPARE(titlesOf(source.todos()), QStringList({u"a"_s, u"b"_s}));
        QCOMPARE(titlesOf(desk.inFile()), QStringList{u"a"_s});
        QCOMPARE(source.storeNote(), u"Not saved yet. No space left on device Velto keeps trying."_s);
        QCOMPARE(source.storeAction(), u"Try again"_s);
        source.pressStoreNote();
        desk.wait(10s);
        desk.fakeFiles.failure.clear();
        desk.wait(10s);
        QCOMPARE(titlesOf(desk.inFile()), QStringList({u"a"_s, u"b"_s}));
        QCOMPARE(source.storeNote() + source.storeAction(), QString());
    }

    void aNewTodoIsShownWhereItWent()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s, Desk::kToday)});
        source.shown()->setSearch(u"nothing like it"_s);
        source.newDraft();
        source.form()->setTitle(u"later"_s);
        source.form()->setHasDate(false);
        source.form()->chooseScope(u"personal"_s);
        source.form()->save();
        QCOMPARE(desk.shown(), QStringList({u"[No project]"_s, u"later"_s}));
        QCOMPARE(source.shown()->selected().value_or(Todo{}).title, u"later"_s);
        QCOMPARE(source.shown()->scope() + rawValue(source.shown()->filter()), u"personalUpcoming"_s);
    }

    void aNewDraftIsDueToday()
    {
        Desk desk;
        TodosSource &source = desk.start();
        source.shown()->setScope(u"personal"_s);
        source.newDraft();
        QCOMPARE(source.draft(), std::optional(makeTodo(0, {}, Desk::kToday, 2, {}, u"personal"_s)));
        DraftForm &form = *source.form();
        QVERIFY(form.shown() && form.hasDate() && !form.more() && form.showsScope());
        QCOMPARE(desk.summaryOf(form.priorities()), u"High|*Normal|Low"_s);
        QCOMPARE(desk.summaryOf(form.scopes()), u"Work|*Personal"_s);
        form.chooseScope(u"office"_s);
        QVERIFY(!form.showsScope());
        form.toggleMore();
        QVERIFY(form.showsScope());
        form.choosePriority(u"3"_s);
        form.setTitle(u"  \t "_s);
        form.save();
        QCOMPARE(source.errorText(), u"Give the todo a title first."_s);
        QVERIFY(form.shown() && desk.fakeFiles.contents.isEmpty());
        form.setTitle(u" t "_s);
        form.date()->moveDays(10);
        form.save();
        QVERIFY(!form.shown() && !source.draft());
        QCOMPARE(source.todos(), QList{makeTodo(1, u" t "_s, u"2026-12-01"_s, 3)});
        source.dismissError();
        QCOMPARE(source.errorText(), QString());
        source.edit(u"1"_s);
        form.setHasDate(false);
        form.save();
        QCOMPARE(source.todos().value(0).due, QString());
    }

    void whatIsTypedInAFormStays()
    {
        Desk desk;
        TodosSource &source = desk.start({makeTodo(1, u"a"_s), makeTodo(2, u"b"_s)});
        const QSignalSpy focus(source.form(), &DraftForm::titleFocusWanted);
        source.edit(u"1"_s);
        source.edit(u"2"_s); // nothing was typed, so the other todo is shown
        QCOMPARE(source.form()->title(), u"b"_s);
        source.form()->setTitle(u"b, better"_s);
        source.edit(u"1"_s);
        source.newDraft();
        source.save(makeTodo(0, {})); // an error, and a refresh
        source.refresh();
        QCOMPARE(source.form()->title(), u"b, better"_s);
        QCOMPARE(source.draft()->id, 2);
        QCOMPARE(focus.count(), 4);
        source.form()->cancel();
        QVERIFY(!source.form()->shown());
        source.edit(u"2"_s);
        QCOMPARE(source.form()->title(), u"b"_s);
    }

    void aDateThatCannotBeReadIsAskedForAgain()
    {
        Desk desk;
        TodosSource &source = desk.start();
        source.newDraft();
        source.form()->setTitle(u"a"_s);
        const QSignalSpy focus(source.form(), &DraftForm::dateFocusWanted);
        source.form()->date()->type(u"soon"_s);
        source.form()->save();
        QVERIFY(source.form()->shown());
        QCOMPARE(focus.count(), 1);
        source.form()->setHasDate(false); // without a date it doesn't matter
        source.form()->save();
        QVERIFY(!source.form()->shown());
        QCOMPARE(source.todos().first().due, QString());
        desk.start({makeTodo(1, u"a"_s, u"soon"_s)}).edit(u"1"_s); // one that another program wrote
        QVERIFY(desk.source->form()->hasDate());
        desk.source->form()->save();
        QCOMPARE(desk.source->todos().value(0).due, Desk::kToday);
    }
};

} // namespace velto

static const Registered<velto::EditingTest> registered;

#include "EditingTest.moc"
