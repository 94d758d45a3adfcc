#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "ViewPage.h"

#include "Design/Theme.h"

#include <QJsonObject>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// The strip, its row and the open panel, as the user reads and presses them.
class ViewsTest : public ViewPage {
    Q_OBJECT

    std::unique_ptr<CollapsedStrip> m_strip;
    std::unique_ptr<PeekLine> m_line;
    std::unique_ptr<PanelOutline> m_outline;
    std::unique_ptr<PanelContents> m_contents;

    void close() override
    {
        ViewWindow::close(); // NOLINT(bugprone-parent-virtual-call): the window goes before what it shows
        m_contents.reset();
        m_outline.reset();
        m_line.reset();
        m_strip.reset();
        ViewPage::close();
    }
    /// Shows one of the module's files, without animation, with these as its properties.
    void showView(const QString &name, QSize size)
    {
        World &w = *m_world;
        m_strip = std::make_unique<CollapsedStrip>(CollapsedStrip::Needs{w.hub, w.clock, w.prefs, w.everyday, w.agents, w.todos});
        m_line = std::make_unique<PeekLine>(w.hub, w.agents);
        m_outline = std::make_unique<PanelOutline>(w.hub, *m_ui, *m_strip);
        m_contents =
            std::make_unique<PanelContents>(PanelContents::Needs{w.hub, w.prefs, w.everyday, w.agents, w.todos, w.quillbox});
        m_ui->setVelto({185, 24});
        QVariantMap properties;
        if (name == u"ExpandedView")
            properties = {{u"ui"_s, QVariant::fromValue(m_ui.get())},
                          {u"contents"_s, QVariant::fromValue(m_contents.get())},
                          {u"peekLine"_s, QVariant::fromValue(m_line.get())}};
        else
            properties = {{u"ui"_s, QVariant::fromValue(m_ui.get())},
                          {u"strip"_s, QVariant::fromValue(m_strip.get())},
                          {u"outline"_s, QVariant::fromValue(m_outline.get())},
                          {u"peekLine"_s, QVariant::fromValue(m_line.get())}};
        m_view->setResizeMode(QQuickView::SizeRootObjectToView);
        m_view->setInitialProperties(properties);
        m_view->setSource(QUrl(u"qrc:/qt/qml/Velto/Shell/%1.qml"_s.arg(name)));
        appear(size);
    }
    void say(Peek::Tone tone, const QString &text, Peek::Decide decide = {})
    {
        Peek peek;
        peek.symbol = u"hand.raised.fill"_s;
        peek.text = text;
        peek.tone = tone;
        peek.resume = u"0"_s;
        peek.decide = std::move(decide);
        m_world->hub.dismissPeek();
        m_world->hub.show(std::move(peek));
    }

private Q_SLOTS:
    void theStripShowsOneFactOnEachSide()
    {
        World &w = *m_world;
        showView(u"CollapsedView"_s, {560, 60});
        const auto items = [&](const char *type) {
            auto found = m_view->rootObject()->findChildren<QQuickItem *>();
            found.removeIf([&](const QQuickItem *item) { return !item->inherits(type); });
            return found;
        };
        QVERIFY(items("QQuickText").isEmpty()); // the first frame needs no typeface
        w.setSessions(2, 0);
        w.refresh();
        QTRY_VERIFY(!items("velto::Glow").isEmpty() && items("velto::Glow").first()->isVisible());
        w.setSessions(0, 0);
        w.refresh();
        Theme::of(m_view->engine())->setReducedMotion(true); // otherwise numbers would still be rolling
        const auto sessions = [&](int working, int waiting) {
            w.setSessions(working, waiting);
            w.refresh();
            w.hub.dismissPeek(); // of those that finished
            return seen();
        };
        QCOMPARE(seen(), QStringList{});
        QCOMPARE(sessions(2, 0), QStringList{u"mint:* | 2"_s});
        QCOMPARE(sessions(12, 3), QStringList{u"mint:* | 12 | amber:* | 3"_s});
        w.meetIn(600);
        QCOMPARE(sessions(2, 0), QStringList{u"(calendar) | 11m | mint:* | 2"_s});
        w.addTodo(u"Call the bank"_s, 0);
        w.wait(0);
        QCOMPARE(sessions(2, 0), QStringList{u"(checklist) | 1 | mint:* | 2"_s});
        w.addTodo(u"Call the bank"_s, -1);
        w.wait(0);
        QCOMPARE(sessions(0, 1), QStringList{u"(checklist) | 2! | amber:* | 1"_s});
        w.everyday.startFocus();
        QCOMPARE(seen(), QStringList{u"25:00 | amber:* | 1"_s}); // beside a camera there is no room for both
        m_ui->setVelto({120, 24});
        QCOMPARE(seen(), QStringList{u"(timer) | 25:00 | amber:* | 1"_s});
        w.applications.setRunning({u"com.obsproject.obs-studio"_s});
        QCOMPARE(seen(), QStringList{u"red:* | amber:* | 1"_s});
        m_ui->setHovering(true);
        QTRY_COMPARE(seen(), QStringList{u"amber:(hand.raised.fill) | 1 agent need your attention | amber:Open"_s});
        sessions(0, 0);
        QCOMPARE(seen(), QStringList{u"coral:(checklist) | 2 todos due | coral:Open"_s});
    }

    void theRowShowsWhatCameAndTakesTheAnswer()
    {
        showView(u"CollapsedView"_s, {560, 60});
        Theme::of(m_view->engine())->setReducedMotion(true);
        m_world->setSessions(0, 2);
        m_world->refresh();
        const std::pair<Peek::Tone, QString> kTones[] = {{Peek::Tone::Good, u"mint"_s},
                                                         {Peek::Tone::Warn, u"amber"_s},
                                                         {Peek::Tone::Bad, u"coral"_s},
                                                         {Peek::Tone::Info, u"ice"_s}};
        for (const auto &[tone, colour] : kTones) {
            say(tone, u"docs is done"_s);
            QTRY_COMPARE(seen().join(u'/'), u"%1:(hand.raised.fill) | docs is done | amber:2 waiting | Resume"_s.arg(colour));
        }
        QList<bool> answers;
        for (const QString &word : {u"Deny"_s, u"Allow"_s}) {
            say(Peek::Tone::Warn, u"docs: Bash "_s + word, [&](std::optional<bool> answer) {
                if (answer)
                    answers.append(*answer);
            });
            QTRY_COMPARE(seen().join(u'/'), u"amber:(hand.raised.fill) | docs: Bash %1 | Deny | Allow"_s.arg(word));
            click(named(word + u": docs: Bash "_s + word)); // too early for it to have been read
            m_world->wait(500);
            click(named(word + u": docs: Bash "_s + word));
        }
        QCOMPARE(answers, (QList<bool>{false, true}));

        Peek peek;
        peek.symbol = u"lock.shield"_s;
        peek.text = u"api: Edit"_s;
        peek.tone = Peek::Tone::Warn;
        peek.question = Question{u"api"_s, u"/home/me/api"_s, u"Edit"_s,
                                 QJsonObject{{u"file_path"_s, u"/home/me/.ssh/config"_s},
                                             {u"old_string"_s, u"Port 22"_s},
                                             {u"new_string"_s, u"Port 4747"_s}}};
        peek.decide = [](std::optional<bool>) {};
        m_world->hub.dismissPeek();
        m_ui->close();
        m_ui->questionHovered(false);
        m_world->wait(400);
        m_world->hub.show(std::move(peek));
        QTRY_COMPARE(seen().join(u'/'),
                     u"amber:(lock.shield) | api | Edit | config | /home/me/.ssh | (chevron.down) | Deny | Allow"_s);
        m_view->resize(560, 400);
        m_ui->questionHovered(true);
        m_world->wait(250);
        QTRY_VERIFY(seen().join(u'/').contains(u"(chevron.up)"_s));
        QTRY_COMPARE(seen().mid(1).join(u'/'),
                     u"File | /home/me/.ssh/config/coral:− | Port 22/mint:+ | Port 4747/Session | api/Folder | /home/me/api"_s);

        // A tool's name is never cut.
        m_view->resize(520, 60);
        for (const QString &tool : {u"Bash"_s, u"mcp__server"_s.repeated(6).left(64), QString(64, u'W')}) {
            Peek named;
            named.text = tool;
            named.question = Question{u"api"_s, {}, tool, QJsonValue()};
            named.decide = [](std::optional<bool>) {};
            m_world->hub.dismissPeek();
            m_world->hub.show(std::move(named));
            const auto isWhole = [&tool](const QQuickItem *item) {
                return item->property("text").toString().remove(u'\n') == tool && !item->property("truncated").toBool();
            };
            QTRY_VERIFY2(std::ranges::any_of(m_view->rootObject()->findChildren<QQuickItem *>(), isWhole), qPrintable(tool));
        }
    }

    void thePanelShowsWhereOneIs()
    {
        World &w = *m_world;
        showView(u"ExpandedView"_s, {780, 520});
        m_ui->openFocused();
        const auto top = [this] { return seen().mid(0, 2).join(u'/'); };
        const QString tabs = u"(house) | Home | (checklist) | Todos | (sparkle) | Agents | (puzzlepiece.extension) | Connect"_s;
        const QString buttons = u" | (%1) | (arrow.clockwise) | (gearshape)/"_s;
        QCOMPARE(top(), tabs + buttons.arg(u"pin"_s) + u"(checkmark.circle) | Nothing needs you right now"_s);
        w.addTodo(u"Call the bank"_s, 0);
        w.setSessions(0, 1);
        w.refresh();
        w.wait(0);
        w.applications.setRunning({u"com.obsproject.obs-studio"_s});
        click(named(u"Pin open"_s));
        QVERIFY(m_ui->pinned());
        QVERIFY2(top().contains(u"coral:(record.circle) | Recording · quiet | ice:(pin.fill)"_s)
                     && top().endsWith(u"/ice:(hand.raised.fill) | ice:1 waiting | ice:(checklist) | ice:1 due"_s),
                 qPrintable(top()));
        click(named(u"Unpin (closes when the pointer leaves)"_s));
        QVERIFY(!m_ui->pinned());
        click(named(u"1 due"_s));
        QCOMPARE(w.hub.selected(), Tab::Todos);
        const QSignalSpy settings(m_ui.get(), &UI::settingsWanted);
        const auto refreshed = w.background.pending();
        click(named(m_contents->refreshLabel()));
        QVERIFY(w.background.pending() > refreshed);
        QCOMPARE(settings.count(), 0);
    }
};

const Registered<ViewsTest> registered;

} // namespace velto

#include "ViewsTest.moc"
