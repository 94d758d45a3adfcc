#include "App/AppDelegate.h"
#include "Core/UI.h"
#include "RunTests.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Shell/PanelOutline.h"
#include "Tabs/Todos/TodosSource.h"
#include "World.h"

#include <QQuickItem>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velto {

/// What the strip and the highlights show of sessions and todos, and where the focus goes when its tab goes.
class StripTest : public QObject {
    Q_OBJECT

    struct Panel : World {
        UI ui{clock, prefs};
        CollapsedStrip strip{{hub, clock, prefs, everyday, agents, todos}};
        PanelOutline outline{hub, ui, strip};
        PanelContents contents{{hub, prefs, everyday, agents, todos, quillbox}};
        QQuickWindow window;
        PanelKeys keys{window, ui, contents, hub};

        Panel()
        {
            background.finishAll();
            ui.setExpanded(true);
        }
        void add(const QString &title, int days)
        {
            Todo todo;
            todo.title = title;
            todo.due = textOf(clock.wallTime().date().addDays(days));
            todos.save(todo);
        }
        QString highlights()
        {
            QStringList texts;
            for (int i = 0; i < contents.highlights()->rowCount(); ++i)
                texts += contents.highlights()->index(i, 0).data(Qt::UserRole + 2).toString();
            return texts.join(u'|');
        }
    };

private Q_SLOTS:
    void theStripSaysWhatNeedsTheUser()
    {
        for (const auto &[days, working, blocked, sides, spoken, summary] :
             std::initializer_list<std::tuple<QList<int>, int, int, QString, QString, QString>>{
                 {QList<int>{}, 0, 0, u"Nothing None"_s, u"Velto. 0 agents working"_s, u"Info Nothing needs you right now"_s},
                 {QList<int>{}, 2, 0, u"Running None"_s, u"Velto. 2 agents working"_s, u"Info 2 agents working"_s},
                 {QList<int>{}, 1, 3, u"Running Waiting"_s, u"Velto. 1 agents working, 3 waiting for you"_s,
                  u"Waiting 3 agents need your attention"_s},
                 {QList{1}, 0, 0, u"Nothing None"_s, u"Velto. 0 agents working"_s, u"Info Nothing needs you right now"_s},
                 {QList{0}, 0, 0, u"Todos None"_s, u"Velto. 1 todos due. 0 agents working"_s, u"Info 1 todo due"_s},
                 {QList{0, -1, -9}, 2, 0, u"Todos Working"_s, u"Velto. 3 todos due, 2 overdue. 2 agents working"_s,
                  u"Overdue 3 todos due"_s},
                 {QList{-1}, 1, 1, u"Todos Waiting"_s, u"Velto. 1 todos due, 1 overdue. 1 agents working, 1 waiting for you"_s,
                  u"Waiting 1 agent need your attention"_s}}) {
            Panel p;
            for (const int day : days)
                p.add(u"todo"_s, day);
            p.setSessions(working, blocked);
            p.refresh();
            const QString shown =
                QVariant::fromValue(p.strip.left()).toString() + u' ' + QVariant::fromValue(p.strip.right()).toString();
            QCOMPARE(shown, sides);
            QCOMPARE(p.strip.spoken(), spoken);
            QCOMPARE(QVariant::fromValue(p.strip.summaryTone()).toString() + u' ' + p.strip.summaryText(), summary);
            QCOMPARE(p.strip.quiet(), sides == u"Nothing None"_s);
            p.ui.setExpanded(false);
            QCOMPARE(p.outline.width(), p.strip.quiet() ? 185.0 : 289.0); // the housing alone, or with 52 on either side
            const auto right = p.strip.right(); // a recording's dot leaves the right side alone
            p.applications.setRunning({u"com.obsproject.obs-studio"_s});
            QCOMPARE(p.strip.left(), CollapsedStrip::Left::Recording);
            QCOMPARE(p.strip.right(), right);
            p.applications.setRunning({});
            p.prefs.set(Prefs::Module::Todos, false);
            p.wait(0);
            QCOMPARE(p.strip.todos(), 0);
            QVERIFY(!p.strip.overdue());
            QVERIFY(p.strip.left() != CollapsedStrip::Left::Todos);
            QVERIFY(!p.highlights().contains(u"due"_s));
            p.prefs.set(Prefs::Module::Agents, false);
            p.wait(0);
            QVERIFY(p.strip.quiet());
            QCOMPARE(p.strip.spoken(), u"Velto. Nothing to report"_s);
        }
    }

    void aTabThatGoesTakesItsFocusAlong()
    {
        Panel p;
        QQuickItem page(p.window.contentItem());
        QQuickItem field(&page);
        p.window.show();
        p.window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&p.window));
        p.hub.open(Tab::Todos);
        field.forceActiveFocus();
        QCoreApplication::processEvents();
        QCOMPARE(p.window.activeFocusItem(), &field);
        p.hub.open(Tab::Agents);
        page.setVisible(false);
        QTRY_VERIFY(p.window.activeFocusItem() != &field);
        QVERIFY(!field.hasFocus());
    }
};

const Registered<StripTest> registered;

} // namespace velto

#include "StripTest.moc"
