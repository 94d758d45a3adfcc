#include "QuillboxView/QuillboxViewTest.h"

#include "Warnings.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// JSON with ' in place of ".
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

QByteArray snapshot(const QByteArray &sessions = {}, const QByteArray &rest = {})
{
    return json("{'todos': [], 'heard': [{'id': 1, 'name': 'Tolver: buy milk', 'at': ''}], 'written_today': {'note': 2}, "
                "'handoffs': [")
        + sessions + "]" + rest + "}";
}

QByteArray session(int id)
{
    return json("{'id': %1, 'name': 'session %1', 'at': ''}").replace("%1", QByteArray::number(id));
}

QByteArray card(const char *answer)
{
    return json(", 'gap': {'id': 1, 'area': 'Rivers', 'question': 'Why?', 'grip': ") + answer + "}";
}

QString nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

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

} // namespace

void QuillboxViewTest::init()
{
    Warnings::start();
    m_world = std::make_unique<World>();
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
}

void QuillboxViewTest::cleanup()
{
    m_tabOrder.reset();
    m_view.reset();
    m_ui.reset();
    m_world.reset();
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void QuillboxViewTest::show()
{
    m_view = std::make_unique<QQuickView>();
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(Qt::black);
    m_view->setInitialProperties(
        {{u"source"_s, QVariant::fromValue(m_world->hub.quillbox())}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
    m_view->setSource(m_world->hub.quillbox()->makeView());
    QVERIFY2(m_view->status() == QQuickView::Ready,
             qPrintable(m_view->errors().isEmpty() ? QString() : m_view->errors().first().toString()));
    m_view->resize(732, 400);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    QVERIFY(!m_view->grabWindow().isNull());
}

QStringList QuillboxViewTest::words() const
{
    QList<std::pair<double, QString>> found;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (const QString name = nameOf(item); !name.isEmpty() && item->height() > 0)
            found.emplaceBack(item->mapToScene({0, 0}).y(), name);
    }
    std::ranges::stable_sort(found, {}, &std::pair<double, QString>::first);
    QStringList result;
    for (const auto &[y, name] : std::as_const(found))
        result.append(name);
    result.removeAll(u"Quillbox"_s);
    return result;
}

QQuickItem *QuillboxViewTest::named(const QString &name) const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->activeFocusOnTab() && nameOf(item) == name)
            return item;
    }
    return nullptr;
}

void QuillboxViewTest::everyStateDrawsWithoutAWarning_data()
{
    QTest::addColumn<HttpReply>("reply");
    QTest::addColumn<QStringList>("shown");
    const QString hub = u"Hub · hub.example.net"_s;
    const auto row = [&](const char *name, const HttpReply &reply, const QStringList &rest) {
        QTest::newRow(name) << reply << QStringList(hub) + rest;
    };
    row("full", {200, snapshot(session(1), card("\"Because.\"")), {}},
        {u"Saved today: note 2"_s, u"Today's learning card"_s, u"Rivers"_s, u"Why?"_s, u"Show the answer"_s,
         u"Live sessions · last 6 hours"_s, u"Other Mac: session 1"_s, u"Heard by Tolver · last 24 hours"_s, u"buy milk"_s});
    row("no answer on the card", {200, snapshot({}, card("null")), {}},
        {u"Saved today: note 2"_s, u"Today's learning card"_s, u"Rivers"_s, u"Why?"_s, u"Heard by Tolver · last 24 hours"_s,
         u"buy milk"_s});
    row("nothing new", {200, json("{'todos': [], 'heard': [], 'handoffs': [], 'written_today': {}}"), {}},
        {u"Nothing new in Quillbox right now."_s});
    row("failed", {503, {}, {}},
        {u"Quillbox at hub.example.net had a problem (503). Velto will try again in a minute."_s, u"Try again"_s,
         u"Nothing new in Quillbox right now."_s});
    QTest::newRow("on this machine") << HttpReply()
                                     << QStringList(
                                            u"Todos come straight from the Quillbox database on this Mac. The learning card, "
                                            "live sessions and Tolver need a Quillbox hub (Settings → Quillbox)."_s);
}

void QuillboxViewTest::everyStateDrawsWithoutAWarning()
{
    QFETCH(HttpReply, reply);
    QFETCH(QStringList, shown);
    m_world->connectHub({});
    m_world->http.answer = [&](const HttpRequest &) { return reply; };
    if (!reply.status)
        m_world->quillboxMode = QuillboxMode::local(u"/home/me/quillbox"_s);
    m_world->hub.quillbox()->reconnect();
    m_world->background.finishAll();
    show();
    QCOMPARE(words(), shown);
    if (QQuickItem *again = named(u"Try again"_s)) {
        const qsizetype asked = m_world->http.requests.size();
        again->forceActiveFocus();
        QTest::keyClick(m_view.get(), Qt::Key_Return);
        QCOMPARE(m_world->http.requests.size(), asked + 1);
    }
}

void QuillboxViewTest::theAnswerOpensByKeysAndByPointer()
{
    for (const bool byKeys : {true, false}) {
        cleanup();
        init();
        m_world->connectHub(snapshot({}, card("\"Because.\"")));
        show();
        QQuickItem *button = named(u"Show the answer"_s);
        QVERIFY(button);
        if (byKeys) {
            button->forceActiveFocus();
            QTest::keyClick(m_view.get(), Qt::Key_Space);
            QTRY_COMPARE(nameOf(m_view->activeFocusItem()), u"Because."_s); // and the keyboard goes with it
        } else
            QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, button->mapToScene({10, 10}).toPoint());
        QTRY_VERIFY(words().contains(u"Because."_s));
        QVERIFY(!named(u"Show the answer"_s));
    }
}

void QuillboxViewTest::theArrowsGoThroughTheRows()
{
    QByteArrayList sessions;
    for (int i = 0; i < 2000; ++i)
        sessions.append(session(i));
    m_world->connectHub(snapshot(sessions.join(',')));
    show();
    QVERIFY(itemsBelow(m_view->contentItem()).size() < 1000); // only what is in sight is made
    QTest::keyClick(m_view.get(), Qt::Key_Tab);
    QCOMPARE(nameOf(m_view->activeFocusItem()), u"Other Mac: session 0"_s);
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Down);
    QCOMPARE(nameOf(m_view->activeFocusItem()), u"Other Mac: session 40"_s);
    m_view->grabWindow();
    const double y = m_view->activeFocusItem()->mapToScene({0, 0}).y();
    QVERIFY(y >= 0 && y + m_view->activeFocusItem()->height() <= 400);
    QTest::keyClick(m_view.get(), Qt::Key_Up);
    QCOMPARE(nameOf(m_view->activeFocusItem()), u"Other Mac: session 39"_s);
}

void QuillboxViewTest::aRowKeepsTheKeyboardOverASnapshot()
{
    m_world->connectHub(snapshot(session(1) + "," + session(2)));
    show();
    named(u"Other Mac: session 2"_s)->forceActiveFocus();
    m_world->http.answer = [](const HttpRequest &) {
        return HttpReply{200, snapshot(session(5) + "," + session(2) + "," + session(6)), {}};
    };
    m_world->hub.quillbox()->fetchAgain();
    m_world->background.finishAll();
    m_view->grabWindow();
    QCOMPARE(nameOf(m_view->activeFocusItem()), u"Other Mac: session 2"_s);
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QCOMPARE(nameOf(m_view->activeFocusItem()), u"Other Mac: session 6"_s);
}

} // namespace velto
