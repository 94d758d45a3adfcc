#include "ViewPage.h"

#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// The tab as a person sees it and works it with the keyboard, and what a refresh does to it.
class AgentsViewTest : public ViewPage {
    Q_OBJECT

    /// With this many sessions of each kind.
    void show(int working = 0, int blocked = 0)
    {
        m_world->setSessions(working, blocked);
        m_world->refresh();
        ViewPage::show(m_world->agents, 400);
        m_world->background.finishAll();
    }
    /// From top to bottom.
    QList<QQuickItem *> rows() const { return rowsWith("isAgentRow"); }
    QStringList ids() const
    {
        QStringList ids;
        for (QQuickItem *shown : rows())
            ids += shown->property("agentId").toString();
        return ids;
    }
    QQuickItem *row(const QString &id) const { return rows().value(ids().indexOf(id)); }

private Q_SLOTS:
    void aRowReadsAsTheSessionIsAndSpaceOpensItsMenu()
    {
        m_world->setListing(R"([
            {"id":"a","state":"working","name":"api","cwd":"/home/me/api","startedAt":1795251540000},
            {"id":"b","state":"blocked","name":"docs","startedAt":1795248000000,
             "sessionId":"aefe0d0b-131d-43a7-b83d-daf04de24178"}])");
        m_world->files.contents.insert(u"/home/me/.claude/jobs/b/state.json"_s, R"({"detail":"May I push?"})");
        m_world->refresh();
        ViewPage::show(m_world->agents, 400);
        m_world->background.finishAll();
        QTRY_COMPARE(rows().size(), 2);
        QCOMPARE(seen(row(u"a"_s)).join(u'/'), u"mint:* | api | mint:Thinking…/1 min | (ellipsis)//home/me/api"_s);
        QCOMPARE(seen(row(u"b"_s)).join(u'/'), u"amber:* | docs | amber:Waiting/1 h | View session | (ellipsis)/May I push?"_s);
        row(u"b"_s)->forceActiveFocus();
        press(Qt::Key_Space);
        QVERIFY(m_ui->sheetOpen());
        QVERIFY(m_world->terminals.launched.isEmpty());
        press(Qt::Key_Escape);
        press(Qt::Key_Return);
        QCOMPARE(m_world->terminals.launched.size(), 1);
    }

    void sevenWaitingFoldAndSixDoNot()
    {
        show(0, 6);
        QCOMPARE(rows().size(), 6);
        QVERIFY(!button(u"Show 1 more"_s));
        m_world->setSessions(0, 7);
        m_world->refresh();
        m_view->resize(732, 900);
        QTRY_COMPARE(rows().size(), 6);
        QTRY_VERIFY(button(u"Show 1 more"_s));
        click(button(u"Show 1 more"_s));
        QTRY_COMPARE(rows().size(), 7);
        click(button(u"Show fewer"_s));
        QTRY_COMPARE(rows().size(), 6);
        click(button(u"Clear waiting"_s));
        QTRY_COMPARE(rows().size(), 0);
        QCOMPARE(m_world->prefs.dismissedAgentIDs().size(), 7);
    }

    void connectingIsAgreedToInASheet()
    {
        show();
        const QString settings = u"/home/me/.claude/settings.json"_s;
        click(button(u"Connect…"_s));
        QTRY_VERIFY(button(u"Add hooks"_s));
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {20, 10}); // what is behind can't be pressed
        QVERIFY(m_ui->sheetOpen());
        press(Qt::Key_Escape);
        QTRY_VERIFY(!button(u"Add hooks"_s));
        QVERIFY(!m_ui->sheetOpen());
        QVERIFY(!m_world->files.contents.contains(settings));

        m_world->files.failure = u"The disk is full."_s;
        click(button(u"Connect…"_s));
        QTRY_VERIFY(button(u"Add hooks"_s));
        click(button(u"Add hooks"_s));
        QTRY_VERIFY(button(u"Connect…"_s)); // the card stays, and says why
        QVERIFY(!m_world->agents.hookErrorText().isEmpty());

        m_world->files.failure.clear();
        click(button(u"Connect…"_s));
        QTRY_VERIFY(button(u"Add hooks"_s));
        press(Qt::Key_Tab);
        for (int i = 0; i < 5 && !button(u"Add hooks"_s)->hasActiveFocus(); ++i)
            press(Qt::Key_Tab); // stays inside the sheet
        QVERIFY(button(u"Add hooks"_s)->hasActiveFocus());
        press(Qt::Key_Return);
        QTRY_VERIFY(!button(u"Connect…"_s));
        QVERIFY(m_world->files.contents.value(settings).contains("127.0.0.1:4747/permission"));
        click(button(u"Disconnect"_s));
        QTRY_VERIFY(button(u"Connect…"_s));
        QVERIFY(!m_world->files.contents.value(settings).contains("127.0.0.1:4747"));
    }

    void aRowKeepsItsIdentityAndItsMenuOverARefresh()
    {
        show(0, 3);
        QTRY_VERIFY(row(u"s1"_s));
        const QPointer<QQuickItem> kept = row(u"s1"_s);
        kept->forceActiveFocus();
        press(Qt::Key_Space);
        QTRY_VERIFY(kept->property("menuOpen").toBool());
        m_world->setSessions(1, 3); // s0 works now, s3 is new
        m_world->refresh();
        QTRY_VERIFY(row(u"s3"_s));
        QVERIFY(kept && row(u"s1"_s) == kept);
        QVERIFY(kept->property("menuOpen").toBool());
        press(Qt::Key_Down);
        press(Qt::Key_Return); // "Hide session"
        QTRY_VERIFY(!row(u"s1"_s));
        QVERIFY(m_world->prefs.dismissedAgentIDs().contains(u"s1"_s));
        QVERIFY(!m_ui->sheetOpen());
    }

    void aPageAtItsTopStaysThere()
    {
        show();
        for (const int working : {0, 2, 5}) {
            m_world->setSessions(working, 8);
            m_world->refresh();
            QTRY_COMPARE(m_world->agents.runningCount(), working);
            m_view->grabWindow();
            QVERIFY(!rows().isEmpty());
            QTRY_COMPARE(list()->property("contentY"), list()->property("originY"));
        }
        // A list that was scrolled keeps in sight what was in sight.
        list()->setProperty("contentY", list()->property("originY").toDouble() + 300);
        m_view->grabWindow();
        const QPointer<QQuickItem> kept = rows().last();
        const QString id = kept->property("agentId").toString();
        const double place = kept->mapToScene({0, 0}).y();
        m_world->setSessions(6, 7);
        m_world->refresh();
        QTRY_COMPARE(m_world->agents.runningCount(), 6);
        m_view->grabWindow();
        QVERIFY(kept && row(id) == kept);
        QVERIFY(std::abs(kept->mapToScene({0, 0}).y() - place) < 60);
    }

    void closingThePanelClosesWhatIsOpenOverIt()
    {
        show(0, 2);
        m_ui->openFocused();
        QTRY_VERIFY(row(u"s0"_s));
        row(u"s0"_s)->forceActiveFocus();
        press(Qt::Key_Menu);
        QVERIFY(m_ui->sheetOpen());
        m_ui->toggle();
        QVERIFY(!m_ui->sheetOpen());
        QVERIFY(!row(u"s0"_s)->property("menuOpen").toBool());

        m_ui->toggle();
        click(button(u"Connect…"_s));
        QTRY_VERIFY(button(u"Add hooks"_s));
        m_ui->toggle();
        QVERIFY(!m_ui->sheetOpen());
        QTRY_VERIFY(!button(u"Add hooks"_s));
    }

    void theKeyboardGoesOnWhereARowGoes()
    {
        show(0, 40);
        QTRY_COMPARE(rows().size(), 6);
        const auto focusedRow = [this] {
            QQuickItem *item = m_view->activeFocusItem();
            while (item && !item->property("isAgentRow").toBool())
                item = item->parentItem();
            return item ? item->property("agentId").toString() : QString();
        };
        const QStringList before = ids();
        row(before.at(2))->forceActiveFocus();
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return}) // "Hide session"
            press(key);
        QTRY_VERIFY(!row(before.at(2)));
        QCOMPARE(focusedRow(), before.at(3));

        button(u"Show 33 more"_s)->forceActiveFocus();
        const QString last = ids().last();
        press(Qt::Key_Return);
        m_view->grabWindow();
        QCOMPARE(focusedRow(), ids().at(ids().indexOf(last) + 1)); // the first one that came

        // Out of sight it takes no keys, and isn't another row's.
        list()->setProperty("contentY", list()->property("originY").toDouble() + 1500);
        m_view->grabWindow();
        QVERIFY(focusedRow().isEmpty());
        press(Qt::Key_Down);
        QVERIFY(!focusedRow().isEmpty());
        QVERIFY(row(focusedRow())->mapToItem(list(), {0, 0}).y() >= 0);
    }
};

const Registered<AgentsViewTest> registered;

} // namespace velto

#include "AgentsViewTest.moc"
