#include "AgentsView/AgentsViewTest.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QStringList s_warnings;
QtMessageHandler s_handler = nullptr;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg)
        s_warnings += text;
    if (s_handler)
        s_handler(type, context, text);
}

// Every visible item below, in the order in which they are drawn.
QList<QQuickItem *> itemsBelow(QQuickItem *root)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : root->childItems()) {
        if (!child->isVisible())
            continue;
        items.append(child);
        items += itemsBelow(child);
    }
    return items;
}

QString nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace

void AgentsViewTest::init()
{
    s_warnings.clear();
    s_handler = qInstallMessageHandler(collect);
    m_world = std::make_unique<World>();
    m_world->background.finishAll();
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
}

void AgentsViewTest::cleanup()
{
    m_tabOrder.reset();
    m_view.reset();
    m_ui.reset();
    m_world.reset();
    qInstallMessageHandler(s_handler);
    s_handler = nullptr;
    QVERIFY2(s_warnings.isEmpty(), qPrintable(s_warnings.join(u'\n')));
}

void AgentsViewTest::show()
{
    m_view = std::make_unique<QQuickView>();
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(Qt::black);
    m_view->setInitialProperties(
        {{u"source"_s, QVariant::fromValue(m_world->hub.agents())}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
    m_view->setSource(m_world->hub.agents()->makeView());
    QVERIFY2(m_view->status() == QQuickView::Ready,
             qPrintable(m_view->errors().isEmpty() ? QString() : m_view->errors().first().toString()));
    m_view->resize(732, 400);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
}

QList<QQuickItem *> AgentsViewTest::rows() const
{
    QList<QQuickItem *> rows;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->property("isAgentRow").toBool())
            rows.append(item);
    }
    std::ranges::sort(rows, {}, [](QQuickItem *row) { return row->mapToScene({0, 0}).y(); });
    return rows;
}

QQuickItem *AgentsViewTest::row(const QString &id) const
{
    for (QQuickItem *item : rows()) {
        if (item->property("agentId").toString() == id)
            return item;
    }
    return nullptr;
}

QQuickItem *AgentsViewTest::button(const QString &name) const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->activeFocusOnTab() && nameOf(item) == name)
            return item;
    }
    return nullptr;
}

QQuickItem *AgentsViewTest::list() const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->inherits("QQuickListView"))
            return item;
    }
    return nullptr;
}

void AgentsViewTest::click(QQuickItem *item)
{
    QVERIFY(item);
    m_view->grabWindow(); // lays everything out
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
}

void AgentsViewTest::everyStateDrawsWithoutAWarning_data()
{
    QTest::addColumn<QByteArray>("listing");
    const QByteArray when = ",\"cwd\":\"/home/me/p\",\"startedAt\":" + QByteArray::number(1795250000000LL) + "}";
    QTest::newRow("none") << QByteArray("[]");
    QTest::newRow("failed") << QByteArray("no JSON");
    QTest::newRow("no claude") << QByteArray();
    QTest::newRow("working") << QByteArray("[{\"id\":\"a\",\"state\":\"working\"" + when + "]");
    QTest::newRow("stale") << QByteArray("[{\"id\":\"a\",\"state\":\"blocked\",\"startedAt\":1}]");
    QTest::newRow("hostile") << QByteArray("[{\"id\":\"a\",\"state\":\"blocked\",\"name\":\"<img src=x>\\u202e"
                                           + QByteArray(10000, 'x') + "\"" + when + "]");
}

void AgentsViewTest::everyStateDrawsWithoutAWarning()
{
    QFETCH(QByteArray, listing);
    m_world->setListing(listing);
    if (listing.isEmpty())
        m_world->tools.installed.remove(u"claude"_s);
    m_world->refresh();
    show();
    QVERIFY(!m_world->hub.agents()->scanned());
    QVERIFY(m_world->hub.agents()->scanning()); // it looks around when it is first seen
    m_world->background.finishAll();
    QVERIFY(m_world->hub.agents()->scanned());
    QVERIFY(button(u"Scan this Mac"_s));
    QVERIFY(!m_view->grabWindow().isNull());
    for (QQuickItem *row : rows())
        QVERIFY(row->width() <= 732);
}

void AgentsViewTest::sevenWaitingFoldAndSixDoNot()
{
    m_world->setSessions(0, 6);
    m_world->refresh();
    show();
    m_world->background.finishAll();
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

void AgentsViewTest::connectingIsAgreedToInASheet()
{
    show();
    m_world->background.finishAll();
    const QString settings = u"/home/me/.claude/settings.json"_s;
    click(button(u"Connect…"_s));
    QTRY_VERIFY(button(u"Add hooks"_s));
    QVERIFY(m_ui->sheetOpen());
    QTest::keyClick(m_view.get(), Qt::Key_Escape);
    QTRY_VERIFY(!button(u"Add hooks"_s));
    QVERIFY(!m_ui->sheetOpen());
    QVERIFY(!m_world->files.contents.contains(settings));

    m_world->files.failure = u"The disk is full."_s;
    click(button(u"Connect…"_s));
    QTRY_VERIFY(button(u"Add hooks"_s));
    click(button(u"Add hooks"_s));
    QTRY_VERIFY(button(u"Connect…"_s)); // the card stays, and says why
    QVERIFY(!m_world->hub.agents()->hookErrorText().isEmpty());

    m_world->files.failure.clear();
    click(button(u"Connect…"_s));
    QTRY_VERIFY(button(u"Add hooks"_s));
    QTest::keyClick(m_view.get(), Qt::Key_Tab);
    for (int i = 0; i < 5 && !button(u"Add hooks"_s)->hasActiveFocus(); ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Tab); // stays inside the sheet
    QVERIFY(button(u"Add hooks"_s)->hasActiveFocus());
    QTest::keyClick(m_view.get(), Qt::Key_Return);
    QTRY_VERIFY(!button(u"Connect…"_s));
    QVERIFY(m_world->files.contents.value(settings).contains("127.0.0.1:4747/permission"));
    click(button(u"Disconnect"_s));
    QTRY_VERIFY(button(u"Connect…"_s));
    QVERIFY(!m_world->files.contents.value(settings).contains("127.0.0.1:4747"));
}

void AgentsViewTest::aRowKeepsItsIdentityAndItsMenuOverARefresh()
{
    m_world->setSessions(0, 3);
    m_world->refresh();
    show();
    m_world->background.finishAll();
    QTRY_VERIFY(row(u"s1"_s));
    const QPointer<QQuickItem> kept = row(u"s1"_s);
    kept->forceActiveFocus();
    QTest::keyClick(m_view.get(), Qt::Key_Space);
    QTRY_VERIFY(kept->property("menuOpen").toBool());
    m_world->setSessions(1, 3); // s0 works now, s3 is new
    m_world->refresh();
    QTRY_VERIFY(row(u"s3"_s));
    QVERIFY(kept && row(u"s1"_s) == kept);
    QVERIFY(kept->property("menuOpen").toBool());
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QTest::keyClick(m_view.get(), Qt::Key_Return); // "Hide session"
    QTRY_VERIFY(!row(u"s1"_s));
    QVERIFY(m_world->prefs.dismissedAgentIDs().contains(u"s1"_s));
    QVERIFY(!m_ui->sheetOpen());
}

void AgentsViewTest::theKeyboardReachesEveryControl()
{
    m_world->setSessions(1, 8);
    m_world->refresh();
    show();
    m_world->background.finishAll();
    QTRY_COMPARE(rows().size(), 7);
    m_view->grabWindow();
    const QList<QQuickItem *> shown = rows();
    shown.at(0)->forceActiveFocus();
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QVERIFY(!shown.at(0)->hasActiveFocus());
    QTest::keyClick(m_view.get(), Qt::Key_Up);
    QVERIFY(shown.at(0)->hasActiveFocus());
    QSet<QString> reached;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QQuickItem *item = m_view->activeFocusItem();
        QVERIFY(item);
        m_view->grabWindow();
        reached += nameOf(item);
        // It stands where it can be seen.
        const double y = item->mapToItem(m_view->contentItem(), {0, 0}).y();
        QVERIFY2(y >= -1 && y + item->height() <= 401, qPrintable(nameOf(item)));
    }
    for (const QString &name : {u"Connect…"_s, u"Clear waiting"_s, u"Show 2 more"_s, u"Scan this Mac"_s, u"More"_s})
        QVERIFY2(reached.contains(name), qPrintable(name));
}

void AgentsViewTest::aPageAtItsTopStaysThere()
{
    show();
    m_world->background.finishAll();
    for (const int working : {0, 2, 5}) {
        m_world->setSessions(working, 8);
        m_world->refresh();
        QTRY_COMPARE(rows().size(), working + 6);
        QTRY_COMPARE(list()->property("contentY"), list()->property("originY"));
    }
    // Who has scrolled away keeps in sight what is there.
    list()->setProperty("contentY", list()->property("originY").toDouble() + 300);
    m_view->grabWindow();
    const QPointer<QQuickItem> kept = rows().last();
    const QString id = kept->property("agentId").toString();
    const double place = kept->mapToScene({0, 0}).y();
    m_world->setSessions(6, 7);
    m_world->refresh();
    QTRY_COMPARE(m_world->hub.agents()->runningCount(), 6);
    m_view->grabWindow();
    QVERIFY(kept && row(id) == kept);
    QVERIFY(std::abs(kept->mapToScene({0, 0}).y() - place) < 60);
}

void AgentsViewTest::closingThePanelClosesWhatIsOpenOverIt()
{
    m_world->setSessions(0, 2);
    m_world->refresh();
    show();
    m_world->background.finishAll();
    m_ui->openFocused();
    QTRY_VERIFY(row(u"s0"_s));
    row(u"s0"_s)->forceActiveFocus();
    QTest::keyClick(m_view.get(), Qt::Key_Menu);
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

void AgentsViewTest::theKeyboardGoesOnWhereARowGoes()
{
    m_world->setSessions(0, 40);
    m_world->refresh();
    show();
    m_world->background.finishAll();
    QTRY_COMPARE(rows().size(), 6);
    const auto focusedRow = [this] {
        QQuickItem *item = m_view->activeFocusItem();
        while (item && !item->property("isAgentRow").toBool())
            item = item->parentItem();
        return item ? item->property("agentId").toString() : QString();
    };
    const auto ids = [this] {
        QStringList shown;
        for (QQuickItem *shownRow : rows())
            shown += shownRow->property("agentId").toString();
        return shown;
    };
    const QStringList before = ids();
    row(before.at(2))->forceActiveFocus();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return}) // "Hide session"
        QTest::keyClick(m_view.get(), key);
    QTRY_VERIFY(!row(before.at(2)));
    QCOMPARE(focusedRow(), before.at(3));

    button(u"Show 33 more"_s)->forceActiveFocus();
    const QString last = ids().last();
    QTest::keyClick(m_view.get(), Qt::Key_Return);
    m_view->grabWindow();
    QCOMPARE(focusedRow(), ids().at(ids().indexOf(last) + 1)); // the first one that came

    // Out of sight it takes no keys, and isn't another row's.
    list()->setProperty("contentY", list()->property("originY").toDouble() + 1500);
    m_view->grabWindow();
    QVERIFY(focusedRow().isEmpty());
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QVERIFY(!focusedRow().isEmpty());
    QVERIFY(row(focusedRow())->mapToItem(list(), {0, 0}).y() >= 0);
}

void AgentsViewTest::aRefreshTouchesNoMoreThanHasChanged()
{
    m_world->setSessions(0, 500);
    m_world->refresh();
    show();
    m_world->background.finishAll();
    m_world->hub.agents()->toggleWaiting();
    QTRY_VERIFY(rows().size() > 6);
    QVERIFY(rows().size() < 60); // only those in sight exist
    QTest::qWait(50);
    const QSignalSpy frames(m_view.get(), &QQuickWindow::frameSwapped);
    const QSignalSpy changes(m_world->hub.agents(), &AgentsSource::changed);
    const QSignalSpy touched(m_world->hub.agents()->waitingRows(), &QAbstractItemModel::dataChanged);
    m_world->refresh();
    QTest::qWait(100);
    QCOMPARE(frames.count(), 0);
    QCOMPARE(changes.count(), 0);

    QByteArray listing = m_world->tools.answers.value(u"claude agents --json"_s).out;
    m_world->setListing(listing.replace("\"session 498\"", "\"another name\""));
    m_world->refresh();
    QCOMPARE(touched.count(), 1);
    QCOMPARE(touched.first().at(0).toModelIndex(), touched.first().at(1).toModelIndex());
    QTRY_VERIFY(frames.count() > 0);
}

} // namespace velto
