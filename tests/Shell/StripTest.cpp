#include "App/AppDelegate.h"
#include "Core/UI.h"
#include "RunTests.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelGeometry.h"
#include "Shell/PanelKeys.h"
#include "Shell/PanelOutline.h"
#include "Tabs/Todos/TodosSource.h"
#include "World.h"

#include <QPainterPath>
#include <QQuickItem>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velto {

/// Where the window stands on whatever displays there are, what the strip and the highlights say of sessions and todos, and what
/// becomes of the focus of a tab that goes.
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
        QString highlights()
        {
            QStringList texts;
            for (int i = 0; i < contents.highlights()->rowCount(); ++i)
                texts += contents.highlights()->index(i, 0).data(Qt::UserRole + 2).toString();
            return texts.join(u'|');
        }
    };
    static Display display(const QRectF &frame, bool main = true)
    {
        Display display;
        display.frame = frame;
        display.main = main;
        return display;
    }
    static Display laptop()
    {
        Display laptop = display({0, 0, 1512, 982}, false);
        laptop.safeAreaTop = 32;
        laptop.auxiliaryTopLeft = QRectF(0, 0, 663, 32);
        laptop.auxiliaryTopRight = QRectF(848, 0, 664, 32);
        return laptop;
    }

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
                p.addTodo(u"todo"_s, day);
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

    void standsOnTheDisplayWithAHousingElseOnTheMainOne()
    {
        const Display left = display({-1920, 0, 1920, 1080}, false);
        const Display main = display({0, 0, 2560, 1440});
        QCOMPARE(*chooseDisplay({left, main, laptop()}), laptop());
        QCOMPARE(*chooseDisplay({left, main}), main);
        QCOMPARE(*chooseDisplay({left}), left);
        QVERIFY(!chooseDisplay({}));
        QCOMPARE(measureHousing(laptop()), QSizeF(185, 32));
        QCOMPARE(measureHousing(main), QSizeF(120, 24));
        QCOMPARE(panelSize({300, 32}, PanelSize::Peeking), QSizeF(624, 68)); // wider with a wide housing
        QCOMPARE(hangFrom(left, panelSize({120, 24}, PanelSize::Collapsed)), QRect(-1072, 0, 224, 24));
    }

    void theOpenPanelGrowsWithItsLettersAndLeavesThePointerSomewhereToGo()
    {
        QCOMPARE(expandedSize({1440, 900}, 1), QSizeF(780, 520));
        QCOMPARE(expandedSize({1440, 900}, 1.5), QSizeF(1170, 780));
        QCOMPARE(expandedSize({1440, 900}, 2), QSizeF(1312, 836));
        QCOMPARE(expandedSize({3840, 2160}, 2), QSizeF(1560, 1040));
        QCOMPARE(expandedSize({840, 560}, 2), QSizeF(780, 520)); // never smaller for it
        QCOMPARE(expandedSize({640, 400}, 2), QSizeF(640, 400));
        QCOMPARE(fittingTextScale({1024, 600}, 2), 2.0);
        QCOMPARE(fittingTextScale({720, 450}, 2), 1.5); // 1440x900 at twice the size
        QCOMPARE(fittingTextScale({720, 450}, 1.25), 1.25);
        QCOMPARE(fittingTextScale({320, 240}, 2), 1.0);
    }

    void theRowGrowsWithItsLettersAndNeverGetsNarrower()
    {
        QCOMPARE(peekRowSize({1440, 900}, 1), QSizeF(520, 36));
        QCOMPARE(peekRowSize({1440, 900}, 1.5), QSizeF(780, 46));
        QCOMPARE(peekRowSize({1366, 768}, 2), QSizeF(1040, 56));
        QCOMPARE(peekRowSize({640, 400}, 2), QSizeF(520, 56));
        QCOMPARE(peekRowSize({400, 300}, 2), QSizeF(400, 56));
        QCOMPARE(mostUnfolded(900, 1), 300.0);
        QCOMPARE(mostUnfolded(768, 2), 600.0);
        QCOMPARE(mostUnfolded(400, 2), 240.0);
        QCOMPARE(panelSize({120, 24}, PanelSize::Unfolded, {1040, 56}, 100), QSizeF(1040, 180));
    }

    void neverLeavesASmallDisplay()
    {
        const Display tiny = display({100, 50, 640, 300});
        QCOMPARE(hangFrom(tiny, panelSize({120, 24}, PanelSize::Expanded)), QRect(100, 50, 640, 300));
        const Display none = display({0, 0, 0, 0});
        QVERIFY(hangFrom(none, panelSize({120, 24}, PanelSize::Expanded)).isValid());
    }

    void theOutlineFlaresAtTheTopAndRoundsAtTheBottom()
    {
        const QPainterPath path = veltoOutline({0, 0, 289, 32}, {6, 10});
        QCOMPARE(path.boundingRect(), QRectF(0, 0, 289, 32));
        QVERIFY(path.contains(QPointF(144, 16)));
        QVERIFY(!path.contains(QPointF(3, 16))); // beside the flare
        QVERIFY(path.contains(QPointF(7, 16)));
        QVERIFY(!path.contains(QPointF(7, 31))); // the rounded corner
        QVERIFY(veltoOutline({0, 0, 0, 0}, {14, 26}).boundingRect().isEmpty());
    }
};

const Registered<StripTest> registered;

} // namespace velto

#include "StripTest.moc"
