#include "Tabs/Todos/Desk.h"
#include "Tabs/Todos/TodosPage.h"

#include "Design/Theme.h"

#include <QAccessible>
#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// The tab as the user sees it, and how it follows changes in the store.
class TodosViewTest : public TodosPage {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyListSaysWhy()
    {
        show();
        QVERIFY(named(u"No open todos."_s));
        QVERIFY(!list());
        press(Qt::Key_Down); // there is nowhere to go
        QVERIFY(!source().shown()->selectedID());
        source().shown()->setSearch(u"x"_s);
        m_view->grabWindow();
        QVERIFY(named(u"Nothing matches “x”."_s));
        source().shown()->setSearch({});
        m_view->grabWindow();
        click(named(u"Add one"_s));
        QVERIFY(source().draft());
        source().form()->setTitle(u"Later"_s);
        source().form()->date()->type(u"12/24/2026"_s);
        source().form()->save();
        m_view->grabWindow();
        QCOMPARE(titles(), QStringList{u"Later"_s}); // the list follows it
        click(named(u"Today"_s));
        QVERIFY(named(u"Nothing due today. 1 more later."_s));
        click(named(u"Overdue"_s));
        QVERIFY(named(u"Nothing overdue."_s));
        click(named(u"Show all"_s));
        QCOMPARE(titles(), QStringList{u"Later"_s});
        source().shown()->setSearch(u"<i>x</i>"_s);
        m_view->grabWindow();
        QVERIFY(named(u"Nothing matches “<i>x</i>”."_s));
        QVERIFY(!named(u"Show all"_s));
        click(named(u"Clear"_s));
        QCOMPARE(titles(), QStringList{u"Later"_s});
    }

    void aRowSaysWhatTheTodoIs()
    {
        show(some());
        QCOMPARE(titles().join(u'|'), u"Send the invoice|Renew the passport|Water the plants"_s);
        QVERIFY(named(u"Send the invoice, High priority, due Today, with Anna, 1 comments"_s));
        QVERIFY(named(u"3 due today · 1 overdue · 1 high priority"_s));
        QVERIFY(named(u"No project"_s));
        QCOMPARE(seen(list()),
                 QStringList({u"Office"_s, u"(circle) | orange:(exclamationmark.2) | Send the invoice | (chevron.down)"_s,
                              u"(calendar) | Today | cyan:(person) | cyan:Anna | (text.bubble) | 1"_s, u"No project"_s,
                              u"(circle) | Renew the passport | (chevron.down)"_s,
                              u"red:(exclamationmark.circle) | red:Overdue · Fri, Nov 20"_s,
                              u"(circle) | Water the plants | (chevron.down)"_s, u"(calendar) | Today"_s}));
        for (QQuickItem *item : rows()) {
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
            QCOMPARE(interface->role(), QAccessible::ListItem);
            QVERIFY(item->width() <= 732);
        }
    }

    void aPressOpensARow()
    {
        show(some());
        QQuickItem *invoice = row(u"Send the invoice"_s);
        const double folded = invoice->height();
        click(invoice);
        QCOMPARE(source().shown()->openID(), std::optional<qint64>(2));
        QTRY_VERIFY(named(u"To the <b>new</b> address:\nhttps://example.com"_s)); // shown literally
        QVERIFY(named(u"Nov 20, 2026, 9:00 AM, She asked again"_s));
        QTRY_VERIFY(invoice->height() > folded + 80);
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, row(u"Water the plants"_s)->mapToScene({100, 20}).toPoint());
        QCOMPARE(source().shown()->openID(), std::optional<qint64>(3)); // at most one is open
        QTRY_COMPARE(invoice->height(), folded);
        click(named(u"Hides details: Water the plants"_s));
        QVERIFY(!source().shown()->openID());
        QCOMPARE(source().shown()->selectedID(), std::optional<qint64>(3));
    }

    void whatIsTypedSurvivesChanges()
    {
        show(some(), 700);
        source().shown()->chooseFilter(u"All"_s);
        source().shown()->press(u"2"_s);
        m_view->grabWindow();
        click(named(u"Add a comment"_s));
        type(u"one thought"_s);
        const QPointer<QQuickItem> field = m_view->activeFocusItem();
        QCOMPARE(focused(), u"Add a comment"_s);
        Todo other = source().todos().at(1);
        other.title = u"Send the invoice again"_s;
        other.comments.append({u"now"_s, u"By somebody else"_s});
        source().save(other);
        source().finish(u"1"_s);
        source().save(makeTodo(0, u"Before all others"_s, {}, 0));
        m_view->grabWindow();
        QVERIFY(row(u"Before all others"_s) && row(u"Send the invoice again"_s));
        QVERIFY(field && field->hasActiveFocus());
        QCOMPARE(field->property("text").toString(), u"one thought"_s);

        // Out of sight and back.
        source().shown()->setSearch(u"train"_s);
        QTRY_VERIFY(!field || !field->isVisible());
        source().shown()->setSearch({});
        QTRY_VERIFY(named(u"Add a comment"_s));
        QCOMPARE(named(u"Add a comment"_s)->property("text").toString(), u"one thought"_s);
        click(named(u"Add a comment"_s));
        press(Qt::Key_Return);
        QCOMPARE(named(u"Add a comment"_s)->property("text").toString(), QString());
        QCOMPARE(source().todos().at(0).comments.last().text, u"one thought"_s);

        source().newDraft();
        m_view->grabWindow();
        type(u"A new one"_s);
        source().undoDone();
        m_world->refresh();
        source().newDraft(); // requested again
        m_view->grabWindow();
        QCOMPARE(focused(), u"Todo title"_s);
        QCOMPARE(m_view->activeFocusItem()->property("text").toString(), u"A new one"_s);
    }

    void theFormFitsWhateverStandsAboveIt()
    {
        show(some());
        source().finish(u"1"_s);
        source().newDraft();
        source().form()->toggleMore();
        source().form()->setDetails(u"1\n2\n3\n4\n5\n6"_s);
        source().form()->save(); // an error, since it has no title
        m_view->grabWindow();
        QVERIFY(named(u"Give the todo a title first."_s) && named(u"Undo"_s));
        QSet<QString> reached;
        for (int i = 0; i < 30; ++i) {
            press(Qt::Key_Tab);
            reached += focused();
            const QRectF place = m_view->activeFocusItem()->mapRectToScene(m_view->activeFocusItem()->boundingRect());
            QVERIFY2(place.top() >= -1 && place.bottom() <= 408 + 1, qPrintable(focused()));
        }
        QVERIFY(reached.size() >= 16);
        click(named(u"Dismiss"_s));
        QVERIFY(!named(u"Give the todo a title first."_s));
        click(named(u"Add todo"_s));
        QVERIFY(named(u"Give the todo a title first."_s) && source().draft());
        click(named(u"Cancel"_s));
        QVERIFY(!source().draft());
    }

    void rowsStandOneBelowTheOther()
    {
        QList<Todo> todos = some();
        todos.append(todos.last());
        todos.last().id = 6;
        show(todos);
        Theme::of(m_view->engine())->setReducedMotion(false);
        const auto overlapping = [this] {
            m_view->grabWindow();
            QMultiMap<double, const QQuickItem *> standing;
            for (const QQuickItem *item : list()->property("contentItem").value<QQuickItem *>()->childItems()) {
                if (item->isVisible() && item->property("isHeading").isValid())
                    standing.insert(item->y(), item);
            }
            double end = 0;
            for (const QQuickItem *item : std::as_const(standing)) {
                if (item->y() < end)
                    return item->property("title").toString();
                end = item->y() + item->height();
            }
            return standing.size() == list()->property("count").toInt() ? QString() : u"too few"_s;
        };
        source().shown()->chooseFilter(u"Upcoming"_s);
        QCOMPARE(overlapping(), QString());
        source().finish(u"6"_s); // the last one, so no other row moves
        m_view->grabWindow();
        QTRY_VERIFY(!list()->property("moving").toBool());
        // Tall rows in place of short ones, and back, at once.
        for (const QString &filter : {u"Today"_s, u"Upcoming"_s, u"All"_s}) {
            source().shown()->chooseFilter(filter);
            QCOMPARE(overlapping(), QString());
        }
        // A tall row that comes back, open, among others.
        source().shown()->press(u"2"_s);
        source().finish(u"2"_s);
        QTRY_COMPARE(overlapping(), QString());
        source().undoDone();
        QTRY_COMPARE(overlapping(), QString());
        QTRY_VERIFY(!list()->property("moving").toBool());
        QTRY_COMPARE(overlapping(), QString());
        // The form isn't drawn over rows that still give way to it.
        source().newDraft();
        m_view->grabWindow();
        QVERIFY(!seen().contains(u"What needs doing?"_s));
        QTRY_VERIFY(seen().contains(u"What needs doing?"_s));
    }

    void tenThousandTodosShowOnlyThoseInSight()
    {
        show(many(10'000));
        QVERIFY(rows().size() > 5 && rows().size() < 40);
        const QSignalSpy changes(&source(), &TodosSource::changed);
        const QSignalSpy frames(m_view.get(), &QQuickWindow::frameSwapped);
        // On a busy machine the frames of the start come late.
        qsizetype before = -1;
        while (std::exchange(before, frames.count()) != frames.count())
            QTest::qWait(300);
        m_world->refresh();
        QTest::qWait(50);
        QCOMPARE(changes.count(), 0);
        QCOMPARE(frames.count(), before); // nothing changed, nothing drawn
        for (const QString &text : {u"9"_s, u"99"_s, u"999"_s, u"99"_s, QString()}) {
            source().shown()->setSearch(text);
            m_view->grabWindow();
            QVERIFY(!rows().isEmpty() && rows().size() < 60);
            QVERIFY(titles().first().contains(text));
        }
        source().finish(source().shown()->rows()->index(1, 0).data(TodoRows::TodoId).toString());
        m_view->grabWindow();
        QVERIFY(rows().size() < 60);
    }
};

const Registered<TodosViewTest> registered;

} // namespace velto

#include "TodosViewTest.moc"
