#include "Tabs/Home/TabPage.h"

#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"

#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace velto {

/// The brief as the user sees it, presses it and moves through it with the keyboard.
class HomeViewTest : public TabPage {
    Q_OBJECT

private:
    /// Overdue and due todos, a meeting, sessions, a priority and a tool that isn't set up.
    void makeItBusy()
    {
        World &w = *m_world;
        w.addTodo(u"Call the bank"_s, -1);
        w.addTodo(u"Write the notes"_s, 0);
        w.setSessions(1, 1);
        w.prefs.setDailyPriority(u"Ship it"_s);
        w.prefs.set(Prefs::Module::Prs, true);
        w.refresh();
        w.meetIn(2990);
    }

    void copyVideo()
    {
        m_world->clipboard.setText(u"https://youtu.be/abc"_s);
        m_world->glances.refresh();
        m_world->background.finishAll();
    }

private Q_SLOTS:
    void theArrowsGoFromRowToRow()
    {
        makeItBusy();
        show(m_world->home);
        // From the header, and without any focus, Down goes to the first row.
        PanelContents contents(
            {m_world->hub, m_world->prefs, m_world->everyday, m_world->agents, m_world->todos, m_world->quillbox});
        const PanelKeys keys(*m_view, *m_ui, contents, m_world->hub);
        press(Qt::Key_Down);
        QCOMPARE(focused(), u"1 todo is overdue, Call the bank"_s);

        // Down and Up move from row to row, Return presses the row's button.
        named(u"1 todo is overdue, Call the bank"_s)->forceActiveFocus();
        press(Qt::Key_Down);
        QCOMPARE(focused(), u"session 1 is waiting for you"_s);
        press(Qt::Key_Down);
        QVERIFY(focused().startsWith(u"Review in"_s));
        press(Qt::Key_Return);
        QCOMPARE(m_world->workspace.opened, QList<QUrl>{QUrl(u"https://meet.example.com/x"_s)});
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        press(Qt::Key_Return);
        QCOMPARE(m_world->hub.selected(), Tab::Todos);
    }

    void thePageReadsAsTheDayIs()
    {
        m_world->prefs.setGlanceGuideDismissed(true);
        makeItBusy();
        show(m_world->home);
        m_view->resize(732, 900);
        QCOMPARE(seen(),
                 QStringList({u"Good morning."_s,
                              u"coral:2 things need you"_s,
                              u"mint:(sparkles) | CLAUDE CODE | 1 min"_s,
                              u"session 0 | mint:* | mint:Thinking…"_s,
                              u"Needs you"_s,
                              u"1 todo is overdue"_s,
                              u"coral:(exclamationmark.circle) | Show"_s,
                              u"Call the bank"_s,
                              u"amber:(hand.raised.fill) | session 1 is waiting for you | Show"_s,
                              u"Up next"_s,
                              u"Review in 50 min"_s,
                              u"ice:(calendar) | Join"_s,
                              u"Added in Velto"_s,
                              u"Focus timer"_s,
                              u"(timer) | Start 25 min"_s,
                              u"Counts down in the velto and tells you when time's up."_s,
                              u"Today"_s,
                              u"1 todo due today"_s,
                              u"ice:(checklist) | Show"_s,
                              u"Write the notes"_s,
                              u"Ship it"_s,
                              u"ice:(pin.fill)"_s,
                              u"Today's priority · stored in Velto"_s,
                              u"Not set up: GitHub | Connect"_s}));
        QVERIFY(!button(u"Ship it"_s)); // nothing to press where there is nothing to do
    }

    void aTickThatChangesNothingPaintsNothing()
    {
        makeItBusy();
        m_world->setSessions(0, 1); // nothing pulses
        m_world->prefs.set(Prefs::Module::Calendar, false); // and nothing counts down
        m_world->refresh();
        show(m_world->home);
        QCOMPARE(framesWhileNothingChanges(46'000), 0);
    }

    void aVideoPlaysInTheSheetAndGoesWithIt()
    {
        copyVideo();
        show(m_world->home);
        FakeVideoPlayer &player = m_world->videoPlayer;
        const auto play = [&] {
            click(named(u"Play: YouTube video"_s));
            QTRY_VERIFY(player.htmlNow.contains(u"/embed/abc?"_s));
            QVERIFY(named(u"Video preview"_s));
            QVERIFY(m_ui->sheetOpen());
            QCOMPARE(focused(), u"Close"_s);
        };
        play();
        const auto items = m_view->findChildren<QQuickItem *>();
        const auto frame =
            std::ranges::find_if(items, [](const QQuickItem *item) { return item->inherits("velto::VideoFrame"); });
        QVERIFY(frame != items.end());
        QTRY_COMPARE(player.placeNow, (*frame)->mapRectToScene((*frame)->boundingRect()).toAlignedRect());
        QVERIFY(m_view->contentItem()->boundingRect().toRect().contains(player.placeNow));
        click(named(u"Open in browser"_s));
        QCOMPARE(m_world->workspace.opened, QList<QUrl>{QUrl(u"https://youtu.be/abc"_s)});
        QVERIFY(!player.htmlNow.isEmpty());
        press(Qt::Key_Escape);
        QTRY_VERIFY(!named(u"Video preview"_s));
        QVERIFY(player.htmlNow.isEmpty());
        QVERIFY(!m_ui->sheetOpen());

        play();
        Q_EMIT player.failed();
        QVERIFY(named(u"The video couldn't be played here. Open it in the browser instead."_s));
        Q_EMIT player.closeWanted(); // Escape, pressed within the video
        QTRY_VERIFY(!named(u"Video preview"_s));
        QVERIFY(!m_ui->sheetOpen());

        play();
        m_ui->toggle(); // the panel closes behind it
        QTRY_VERIFY(player.htmlNow.isEmpty());
        QVERIFY(!m_ui->sheetOpen());
    }

    void withoutThePlayerTheBrowserOpensAndItSaysSo()
    {
        m_world->videoPlayer.here = false;
        show(m_world->home);
        click(named(u"Use copied link"_s));
        m_world->wait(300);
        QVERIFY(named(u"No link is copied right now."_s));
        m_world->wait(8000);
        copyVideo();
        click(named(u"Use copied link"_s));
        m_world->wait(300);
        QCOMPARE(focused(), u"YouTube video, Copied link · loading preview"_s);
        click(named(u"Play: YouTube video"_s));
        QCOMPARE(m_world->workspace.opened, QList<QUrl>{QUrl(u"https://youtu.be/abc"_s)});
        const QString says = u"Opened in your browser. Videos play here once Qt WebEngine is installed."_s;
        QVERIFY(named(says));
        QVERIFY(!named(u"Video preview"_s));
        m_world->wait(8000);
        QVERIFY(!named(says));
    }
};

const Registered<HomeViewTest> registered;

} // namespace velto

#include "HomeViewTest.moc"
