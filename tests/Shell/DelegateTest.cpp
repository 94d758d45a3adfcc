#include "App/AppDelegate.h"
#include "App/CommandLine.h"
#include "Core/UI.h"
#include "Platform/Fake/FakePanelWindow.h"
#include "RunTests.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "World.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// Where the window is at each moment, and what the strip shows.
class DelegateTest : public QObject {
    Q_OBJECT

    struct Desktop : World {
        FakeDisplays displays;
        FakePanelWindow panelWindow;
        FakeSession session;
        FakeHotKey hotKey;
        FakeStatusItem statusItem;
        UI ui{clock, prefs};
        CollapsedStrip strip{{hub, clock, prefs, everyday, agents, todos}};
        PanelOutline outline{hub, ui, strip};
        PeekLine line{hub, agents};
        AppDelegate delegate{{clock, hub, prefs, ui, outline, displays, panelWindow, session}};

        Desktop()
        {
            displays.displays = {screen({0, 0, 1920, 1080})};
            background.finishAll();
            delegate.showPanel();
            delegate.addHotKey(hotKey);
            delegate.addStatusItem(statusItem);
        }
        static Display screen(const QRectF &frame)
        {
            Display display;
            display.frame = frame;
            display.main = true;
            return display;
        }
        QRect frame() const { return panelWindow.frames.last(); }
        void peek(const QString &text)
        {
            Peek peek;
            peek.text = text;
            hub.show(std::move(peek));
        }
    };

    static constexpr QRect kCollapsed{848, 0, 224, 24};
    static constexpr QRect kPeeking{700, 0, 520, 60};
    static constexpr QRect kExpanded{570, 0, 780, 520};

private Q_SLOTS:
    void growsAtOnceAndShrinksWhenTheBlackHasArrived()
    {
        Desktop d;
        QCOMPARE(d.frame(), kCollapsed);
        QVERIFY(d.panelWindow.shown);
        d.ui.stripEntered();
        QCOMPARE(d.frame(), kExpanded);
        QVERIFY(!d.panelWindow.focused);
        d.ui.close();
        QCOMPARE(d.frame(), kExpanded);
        d.wait(550);
        QCOMPARE(d.frame(), kCollapsed);

        // Opened again while closing: it doesn't shrink.
        d.ui.openFocused();
        QVERIFY(d.panelWindow.focused);
        d.ui.close();
        QVERIFY(!d.panelWindow.focused);
        d.wait(300);
        d.ui.openFocused();
        d.wait(1000);
        QCOMPARE(d.frame(), kExpanded);

        // Without a compositor nothing is animated.
        d.panelWindow.alpha = false;
        Q_EMIT d.panelWindow.compositedChanged();
        d.ui.close();
        QCOMPARE(d.frame(), kCollapsed);

        // A window that keeps its width changes nothing but its height, once the compositor is there.
        d.panelWindow.alpha = d.panelWindow.wide = true;
        Q_EMIT d.panelWindow.compositedChanged();
        QCOMPARE(d.frame(), QRect(570, 0, 780, 24));
        d.peek(u"one"_s);
        QCOMPARE(d.frame(), QRect(570, 0, 780, 60));
    }

    void aPeekWidensTheStripAndLeavesItInTime()
    {
        Desktop d;
        d.peek(u"one"_s);
        QCOMPARE(d.frame(), kPeeking);
        d.peek(u"two"_s);
        d.wait(4000);
        QCOMPARE(d.line.text(), u"two"_s);
        QCOMPARE(d.frame(), kPeeking);
        d.wait(4000);
        QVERIFY(!d.line.onShow());
        QCOMPARE(d.line.text(), u"two"_s); // while it slides away
        QCOMPARE(d.frame(), kPeeking);
        d.wait(550);
        QCOMPARE(d.frame(), kCollapsed);

        // Behind the open panel it has no effect.
        d.ui.openFocused();
        d.peek(u"three"_s);
        QCOMPARE(d.frame(), kExpanded);
        d.ui.close();
        d.wait(550);
        QCOMPARE(d.frame(), kPeeking);
    }

    void aQuestionUnfoldsUnderThePointerAndComesBeforeAllElse()
    {
        Desktop d;
        QStringList answers;
        const auto ask = [&](const QString &tool) {
            Peek peek;
            peek.text = u"api: "_s + tool;
            peek.question = Question{u"api"_s, {}, tool, {}};
            peek.decide = [&answers, tool](std::optional<bool> answer) {
                answers.append(tool + QLatin1String(!answer ? "?" : *answer ? "+" : "-"));
            };
            d.hub.show(std::move(peek));
        };
        ask(u"one"_s);
        ask(u"two"_s);
        d.ui.stripEntered(); // on its way to a pill
        QVERIFY(!d.ui.expanded());
        d.ui.questionHovered(true);
        d.wait(249);
        QVERIFY(!d.ui.unfolded());
        d.wait(1);
        QVERIFY(d.ui.unfolded());
        QCOMPARE(d.frame(), kPeeking); // until its view says how much it needs
        d.ui.setUnfoldedHeight(100);
        QCOMPARE(d.frame(), kPeeking.adjusted(0, 0, 0, 100));
        d.ui.setUnfoldedHeight(10'000);
        QCOMPARE(d.frame(), kPeeking.adjusted(0, 0, 0, 300));

        d.line.answer(true);
        QCOMPARE(d.line.tool(), u"one"_s); // the pills have only just reached their new place
        d.wait(300);
        d.line.answer(true);
        QCOMPARE(d.line.tool(), u"two"_s); // folded, since the pointer hasn't rested on this one
        QVERIFY(!d.ui.unfolded());
        d.wait(250);
        QVERIFY(d.ui.unfolded());
        d.ui.questionHovered(false);
        d.wait(400);
        QVERIFY(!d.ui.unfolded());
        d.wait(550);
        QCOMPARE(d.frame(), kPeeking);

        // The global key moves the focus to the question, and a key already on its way isn't meant for the new place.
        QSignalSpy wanted(&d.ui, &UI::questionWanted);
        d.hotKey.press();
        d.wait(0);
        QCOMPARE(wanted.size(), 1);
        QVERIFY(d.panelWindow.focused && d.ui.expanded());
        d.line.answer(true);
        QCOMPARE(answers, QStringList{u"one+"_s});
        d.wait(300);
        d.line.answer(true);
        QCOMPARE(answers, (QStringList{u"one+"_s, u"two+"_s}));
        d.ui.close();
        d.ui.tapped(); // now the strip is a strip again
        QVERIFY(d.ui.expanded());
    }

    void followsTheDisplays()
    {
        Desktop d;
        d.displays.setAll({Desktop::screen({0, 0, 1280, 720})});
        QCOMPARE(d.frame(), QRect(528, 0, 224, 24));
        d.displays.setAll({});
        QVERIFY(!d.panelWindow.shown);
        d.ui.openFocused(); // there is nothing to go to
        d.ui.close();
        d.wait(1000);
        QVERIFY(!d.panelWindow.shown);
        Display housed = Desktop::screen({1280, 0, 1512, 982});
        housed.main = false;
        housed.safeAreaTop = 32;
        housed.auxiliaryTopLeft = QRectF(1280, 0, 663, 32);
        housed.auxiliaryTopRight = QRectF(2128, 0, 664, 32);
        d.displays.setAll({Desktop::screen({0, 0, 1280, 720}), housed});
        QVERIFY(d.panelWindow.shown);
        QCOMPARE(d.frame(), QRect(1892, 0, 289, 32));
    }

    void theGlobalKeyAndTheMenuOpenWithTheKeyboard()
    {
        Desktop d;
        d.hotKey.press();
        d.wait(0);
        QVERIFY(d.ui.expanded());
        QVERIFY(d.panelWindow.focused);
        QVERIFY(d.background.pending() == 0);
        d.wait(450);
        QCOMPARE(d.background.pending(), 1); // the panel shows current data

        // Open without the keyboard, then asked for with it.
        d.ui.close();
        d.ui.stripEntered();
        QVERIFY(!d.panelWindow.focused);
        d.statusItem.menu.front().action();
        QVERIFY(d.panelWindow.focused);

        // The tray draws no menu: the strip does.
        d.ui.close();
        d.statusItem.openMenu();
        QVERIFY(d.ui.menuOpen());
        QVERIFY(d.panelWindow.focused);
        d.ui.closeMenu();

        // So do other programs, by name.
        d.ui.close();
        int cheers = 0;
        d.delegate.addAction(u"cheer"_s, [&] { ++cheers; });
        d.delegate.act(u"cheer"_s);
        d.delegate.act(u"unheard-of"_s);
        QVERIFY(cheers == 1 && !d.ui.expanded());
        d.delegate.act(u"open-and-search"_s);
        QVERIFY(d.ui.expanded() && d.panelWindow.focused);
    }

    void theCommandLineSaysWhatToDo()
    {
        const QStringList none;
        for (const auto &[arguments, here, there, unknown] :
             std::initializer_list<std::tuple<QStringList, QStringList, QStringList, QString>>{
                 {none, none, QStringList{u"open"_s}, QString()},
                 {QStringList{u"--expanded"_s}, QStringList{u"open"_s}, QStringList{u"open"_s}, QString()},
                 {QStringList{u"--demo-peek"_s, u"x"_s, u"--search"_s}, QStringList{u"open-and-search"_s, u"demo-peek"_s},
                  QStringList{u"open-and-search"_s, u"demo-peek"_s}, QString()},
                 {QStringList{u"--activated"_s}, none, none, QString()},
                 {QStringList{u"-platform"_s, u"--serach"_s}, none, QStringList{u"open"_s}, u"--serach"_s}}) {
            const auto commandLine = CommandLine::parse(arguments);
            QCOMPARE(commandLine.actions, here);
            QCOMPARE(commandLine.actionsForTheOther(), there);
            QCOMPARE(commandLine.unknown, unknown);
        }
    }
    void aRowThatLeadsToOneOfSeveralSessionsSaysSo()
    {
        Desktop d;
        d.setSessions(0, 3);
        d.refresh();
        Peek peek;
        peek.text = u"resume"_s;
        peek.resume = u"aefe0d0b-131d-43a7-b83d-daf04de24178"_s;
        d.hub.show(peek);
        QCOMPARE(d.line.waiting(), u"3 waiting"_s);
        QCOMPARE(d.line.actionLabel(), u"Resume"_s);
        QCOMPARE(d.line.hint(), u"Resumes"_s);
        d.setSessions(0, 1);
        d.refresh();
        QCOMPARE(d.line.waiting(), QString());
    }

    void theSessionsStateCounts()
    {
        Desktop d;
        const QDateTime later = d.hub.updated().addSecs(7200); // the machine slept
        d.clock.setWallTime(later);
        Q_EMIT d.session.woke();
        QCOMPARE(d.hub.updated(), later);

        d.session.setLocked(true);
        QVERIFY(!d.panelWindow.shown);
        d.peek(u"secret"_s);
        d.ui.openFocused();
        QVERIFY(!d.panelWindow.shown);
        d.session.setLocked(false);
        QVERIFY(d.panelWindow.shown);
        QCOMPARE(d.frame(), kExpanded);
        d.hub.dismissPeek();
        d.delegate.welcomed();
        QVERIFY(d.prefs.onboarded());
        QCOMPARE(d.hub.peek().text, u"Rest the pointer here to open Velto"_s);
    }
};

const Registered<DelegateTest> registered;

} // namespace velto

#include "DelegateTest.moc"
