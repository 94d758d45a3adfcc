#include "HomeView/ConnectViewTest.h"

#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace velto {

void ConnectViewTest::open(QStringList forms)
{
    m_world->prefs.set(Prefs::Module::Mcp, true);
    m_world->tools.answers.insert(u"claude mcp list"_s,
                                  {true, "a: https://a.example - ✔ Connected\nb: https://b.example - ✘ Failed to connect\n", {}});
    m_world->hub.refresh(true);
    m_world->background.finishAll();
    show(*m_world->hub.connectTab());
    for (const QString &form : forms)
        m_world->hub.connectTab()->act(form);
}

void ConnectViewTest::theKeyboardReachesEveryControl()
{
    open({u"work"_s, u"calendar"_s, u"mcp"_s});
    const QStringList round = tabRound();
    QStringList wanted;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->activeFocusOnTab() && item->isEnabled())
            wanted.append(nameOf(item));
    }
    QVERIFY(wanted.size() >= 35);
    for (const QString &name : wanted) {
        QVERIFY2(!name.isEmpty(), "a control without a name");
        QVERIFY2(round.contains(name), qPrintable(name + u" not in "_s + round.join(u" / "_s)));
    }
    QVERIFY2(round.filter(u"out of sight"_s).isEmpty(), qPrintable(round.join(u'\n')));
    QVERIFY(round.indexOf(u"Linear API key"_s) > round.indexOf(u"Claude usage today"_s)); // in the order one reads
}

void ConnectViewTest::tilesAndServersKeepTheirIdentityOverARefresh()
{
    open({u"mcp"_s});
    QQuickItem *const toggle = named(u"MCP server health"_s);
    QQuickItem *const inspect = named(u"Inspect: b"_s);
    QVERIFY(toggle && inspect);
    inspect->forceActiveFocus();
    m_world->tools.answers.insert(
        u"claude mcp list"_s,
        {true, "new: https://n.example - ✔ Connected\nb: https://b.example - ! Needs authentication\n", {}});
    m_world->hub.refresh(true);
    m_world->background.finishAll();
    QCOMPARE(named(u"MCP server health"_s), toggle);
    QCOMPARE(named(u"Sign in: b"_s), inspect);
    QVERIFY(inspect->hasActiveFocus());
}

void ConnectViewTest::aTickThatChangesNothingPaintsNothing()
{
    open({u"work"_s, u"calendar"_s, u"mcp"_s});
    QCOMPARE(framesWhileNothingChanges(46'000), 0);
}

void ConnectViewTest::aTokenIsTypedSavedAndRemoved()
{
    open({u"work"_s});
    const auto type = [this](const char *text) {
        named(u"Linear API key"_s)->forceActiveFocus();
        for (const char *key = text; *key; ++key)
            QTest::keyClick(m_view.get(), *key);
    };
    QVERIFY(!named(u"Save Linear API key"_s)->isEnabled());
    type("  ");
    QVERIFY(!named(u"Save Linear API key"_s)->isEnabled());
    type("lin_1");
    QVERIFY(!named(u"Remove Linear API key"_s));
    click(named(u"Save Linear API key"_s));
    m_world->background.finishAll();
    QCOMPARE(m_world->keychain.entries.value(u"Velto.linear"_s), u"lin_1"_s);
    QCOMPARE(named(u"Linear API key"_s)->property("text").toString(), QString());
    click(named(u"Remove Linear API key"_s));
    m_world->background.finishAll();
    QVERIFY(m_world->keychain.entries.value(u"Velto.linear"_s).isEmpty());
    QVERIFY(!named(u"Remove Linear API key"_s));
}

void ConnectViewTest::aServerIsTypedAndAdded()
{
    open({u"mcp"_s});
    const auto type = [this](const QString &field, const QString &text) {
        named(field)->forceActiveFocus();
        for (const QChar key : text)
            QTest::keyClick(m_view.get(), key.toLatin1());
    };
    type(u"Server name"_s, u"docs"_s);
    type(u"HTTPS MCP URL"_s, u"http"_s);
    QVERIFY(!named(u"Add the MCP server"_s)->isEnabled());
    QVERIFY(named(u"The address has to begin with https://."_s));
    type(u"HTTPS MCP URL"_s, u"s://d.example"_s);
    QVERIFY(!named(u"The address has to begin with https://."_s));
    QTest::keyClick(m_view.get(), Qt::Key_Return);
    QCOMPARE(m_world->terminals.launched.size(), 1);
    QVERIFY(m_world->terminals.launched[0].second.endsWith(u"claude mcp add --transport http 'docs' 'https://d.example'"_s));
}

void ConnectViewTest::thePanelMakesWayForTheFolders()
{
    open({});
    m_ui->setPinned(true);
    QVERIFY(m_ui->expanded());
    click(named(u"Add folder: Git repos with unsaved work"_s));
    QCOMPARE(m_world->folderPanel.promptNow, u"Watch"_s);
    QVERIFY(!m_ui->expanded());
}

} // namespace velto
