#include "Tabs/Home/TabPage.h"

#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace velto {

/// The Connect tab with everything unfolded, as the user navigates and presses it.
class ConnectViewTest : public TabPage {
    Q_OBJECT

private:
    void open(QStringList forms)
    {
        m_world->prefs.set(Prefs::Module::Mcp, true);
        m_world->tools.answers.insert(
            u"claude mcp list"_s, {true, "a: https://a.example - ✔ Connected\nb: https://b.example - ✘ Failed to connect\n", {}});
        m_world->hub.refresh(true);
        m_world->background.finishAll();
        show(m_world->connectTab);
        for (const QString &form : forms)
            m_world->connectTab.act(form);
    }

    void typeInto(const QString &field, const QString &text)
    {
        named(field)->forceActiveFocus();
        type(text);
    }

private Q_SLOTS:
    void aTileReadsAsItsModuleIs()
    {
        open({});
        QCOMPARE(
            seen(named(u"MCP server health"_s)).join(u'/'),
            u"ice:(point.3.connected.trianglepath.dotted) | MCP server health/orange:1 failed · open to diagnose. | Set up"_s);
        const auto isOn = [this](const QString &module) {
            const QAccessibleInterface *toggle = QAccessible::queryAccessibleInterface(button(module));
            return toggle && toggle->state().checked;
        };
        QVERIFY(isOn(u"MCP server health"_s));
        QVERIFY(!isOn(u"GitHub reviews"_s));
    }

    void aTickThatChangesNothingPaintsNothing()
    {
        open({u"work"_s, u"calendar"_s, u"mcp"_s});
        QCOMPARE(framesWhileNothingChanges(46'000), 0);
    }

    void aTokenIsTypedSavedAndRemoved()
    {
        open({});
        named(u"Manage: Work and outreach"_s)->forceActiveFocus();
        press(Qt::Key_Space); // who opens a form by a key types into its first field
        QVERIFY(!named(u"Save Linear API key"_s)->isEnabled());
        type(u"  "_s);
        QCOMPARE(named(u"Linear API key"_s)->property("text").toString(), u"  "_s);
        QVERIFY(!named(u"Save Linear API key"_s)->isEnabled());
        typeInto(u"Linear API key"_s, u"lin_1"_s); // with leading blanks, which are cut off
        QCOMPARE(named(u"Linear API key"_s)->property("displayText").toString(), u"•••••••"_s);
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

    void aServerIsTypedAndAdded()
    {
        open({u"mcp"_s});
        typeInto(u"Server name"_s, u"docs"_s);
        typeInto(u"HTTPS MCP URL"_s, u"http"_s);
        QVERIFY(!named(u"Add the MCP server"_s)->isEnabled());
        QVERIFY(named(u"The address has to begin with https://."_s));
        typeInto(u"HTTPS MCP URL"_s, u"s://d.example"_s);
        QVERIFY(!named(u"The address has to begin with https://."_s));
        press(Qt::Key_Return);
        QCOMPARE(m_world->terminals.launched.size(), 1);
        QVERIFY(m_world->terminals.launched[0].second.endsWith(u"claude mcp add --transport http 'docs' 'https://d.example'"_s));
    }
};

const Registered<ConnectViewTest> registered;

} // namespace velto

#include "ConnectViewTest.moc"
