#include "Core/UI.h"
#include "RunTests.h"
#include "StoreDesk.h"

using namespace Qt::StringLiterals;

namespace velto {

/// What pointer, taps and focus do to the panel.
class UITest : public QObject {
    Q_OBJECT

    struct World : StoreDesk {
        UI ui{clock, prefs};

        void wait(int milliseconds) { clock.advance(std::chrono::milliseconds(milliseconds)); }
    };

private Q_SLOTS:
    void restingOnTheStripOpensAndLeavingCloses()
    {
        World w;
        w.ui.pointerChanged(true);
        QVERIFY(!w.ui.expanded()); // for example on the row under the strip
        w.ui.stripEntered();
        QVERIFY(w.ui.expanded());
        QVERIFY(!w.ui.takeFocusOnOpen());
        w.ui.pointerChanged(false);
        w.wait(399);
        w.ui.pointerChanged(true);
        w.wait(5000);
        QVERIFY(w.ui.expanded());
        w.ui.pointerChanged(false);
        w.wait(400);
        QVERIFY(!w.ui.expanded());
        w.ui.pointerChanged(true);
        w.ui.pointerChanged(false);
        w.ui.openFocused(); // a key opens it then, and it stays
        w.wait(1000);
        QVERIFY(w.ui.expanded());
    }

    void whatWasClosedUnderThePointerStaysClosedUntilItComesAnew()
    {
        World w;
        bool there = true;
        w.ui.pointerOnStrip = [&there] { return there; };
        w.ui.stripEntered();
        QVERIFY(w.ui.expanded());
        w.ui.close(); // with a key
        w.wait(5000);
        w.ui.stripEntered(); // the window has become smaller
        QVERIFY(!w.ui.expanded());
        w.ui.pointerChanged(false); // so it seems while the window shrinks
        w.ui.stripEntered();
        QVERIFY(!w.ui.expanded());
        there = false;
        w.ui.pointerChanged(false);
        there = true;
        w.ui.stripEntered();
        QVERIFY(w.ui.expanded());

        // A pointer that overshot a question's answers doesn't open anything after the question either.
        there = false;
        w.ui.close();
        bool asks = true;
        w.ui.asking = [&asks] { return asks; };
        there = true;
        w.ui.stripEntered();
        asks = false;
        w.ui.questionChanged();
        w.wait(5000);
        w.ui.stripEntered();
        QVERIFY(!w.ui.expanded());
    }

    void desktopThatKeepsTheKeyboardIsTold()
    {
        World w;
        w.ui.openFocused();
        w.ui.awaitKeyboard();
        w.wait(999);
        QVERIFY(!w.ui.keyboardKept());
        w.wait(1);
        QVERIFY(w.ui.keyboardKept());
        w.ui.setKeyboard(true); // after all
        QVERIFY(!w.ui.keyboardKept());
        w.ui.awaitKeyboard();
        w.wait(1000);
        QVERIFY(!w.ui.keyboardKept());
        w.ui.setKeyboard(false);
        w.ui.awaitKeyboard();
        w.ui.close();
        w.wait(1000);
        QVERIFY(!w.ui.keyboardKept());
    }

    void clickModeOpensOnATapOnly()
    {
        World w;
        w.prefs.setOpenMode(Prefs::OpenMode::Click);
        w.ui.pointerChanged(true);
        w.ui.stripEntered();
        QVERIFY(!w.ui.expanded());
        w.ui.tapped();
        QVERIFY(w.ui.expanded());
        QVERIFY(w.ui.takeFocusOnOpen());
        w.ui.pointerChanged(false);
        w.wait(400);
        QVERIFY(!w.ui.expanded());

        w.ui.openFocused();
        w.ui.pointerChanged(true);
        w.ui.focusLost(); // with the pointer over the panel
        QVERIFY(w.ui.expanded());
        w.ui.pointerChanged(false);
        w.ui.focusLost();
        QVERIFY(!w.ui.expanded());
    }

    void pinSheetAndUnfinishedWorkKeepItOpen()
    {
        World w;
        bool draft = false;
        w.ui.unfinished = [&draft] { return draft; };
        const auto staysOpen = [&w] {
            w.ui.openFocused();
            w.ui.pointerChanged(false);
            w.ui.focusLost();
            w.wait(1000);
            return w.ui.expanded();
        };
        QVERIFY(!staysOpen());
        w.ui.setPinned(true);
        QVERIFY(staysOpen());
        w.ui.setPinned(false);
        w.ui.sheetOpened();
        QVERIFY(staysOpen());
        w.ui.sheetClosed();
        draft = true;
        QVERIFY(staysOpen());
        draft = false;
        QVERIFY(!staysOpen());
        int chosen = 0;
        w.ui.setMenu({{u"Open"_s, {}, {}, {}}, {}, {u"Quit"_s, Qt::CTRL | Qt::Key_Q, u"Ctrl+Q"_s, [&] { ++chosen; }}});
        w.ui.askForMenu();
        w.wait(1000);
        QVERIFY(!w.ui.expanded() && w.ui.menuOpen()); // it hangs under the strip
        w.ui.closeMenu();
        w.ui.openFocused();
        w.ui.askForMenu();
        w.ui.pointerChanged(false);
        w.wait(1000);
        QVERIFY(w.ui.expanded() && w.ui.menuOpen());
        QVERIFY(!w.ui.pressMenuKey(Qt::Key_W, Qt::ControlModifier));
        QVERIFY(w.ui.pressMenuKey(Qt::Key_Q, Qt::ControlModifier));
        QVERIFY(chosen == 1 && !w.ui.menuOpen());
        w.ui.openFocused();
        w.ui.askForMenu();
        w.ui.pointerChanged(false);
        w.ui.closeMenu(); // with the pointer elsewhere
        w.wait(400);
        QVERIFY(!w.ui.expanded());
    }
};

const Registered<UITest> registered;

} // namespace velto

#include "UITest.moc"
