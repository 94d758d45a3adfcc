#include "TodosView/TodosPage.h"

#include "Design/Theme.h"
#include "Tabs/Todos/NativeTodos.h"
#include "Warnings.h"

#include <QAccessible>
#include <QLocale>
#include <QQmlEngine>
#include <QQuickItem>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

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

Todo makeTodo(qint64 id, const QString &title, const QString &due)
{
    Todo todo;
    todo.id = id;
    todo.title = title;
    todo.due = due;
    return todo;
}

} // namespace

QList<Todo> TodosPage::some()
{
    QList<Todo> todos{makeTodo(1, u"Renew the passport"_s, u"2026-11-20"_s), makeTodo(2, u"Send the invoice"_s, u"2026-11-21"_s),
                      makeTodo(3, u"Water the plants"_s, u"2026-11-21"_s), makeTodo(4, u"Book the train"_s, u"2026-11-24"_s),
                      makeTodo(5, u"Read the paper"_s, {})};
    todos[1].prio = 1;
    todos[1].who = u"Anna"_s;
    todos[1].project = u"Office"_s;
    todos[1].details = u"To the <b>new</b> address:\nhttps://example.com"_s;
    todos[1].comments = {{u"Nov 20, 2026, 9:00 AM"_s, u"She asked again"_s}};
    return todos;
}

QList<Todo> TodosPage::many(int count)
{
    QList<Todo> todos;
    for (int i = 1; i <= count; ++i) {
        todos.append(makeTodo(i, u"Todo number %1"_s.arg(i), u"2026-11-21"_s));
        todos.last().project = u"Project %1"_s.arg(i / 40);
        todos.last().who = i % 3 ? u"me"_s : u"Anna"_s;
    }
    return todos;
}

void TodosPage::init()
{
    Warnings::start();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

void TodosPage::close()
{
    m_tabOrder.reset();
    m_keys.reset();
    m_view.reset();
    m_contents.reset();
    m_ui.reset();
    m_world.reset();
}

void TodosPage::cleanup()
{
    close();
    QLocale::setDefault(QLocale::system());
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void TodosPage::show(const QList<Todo> &todos, int height)
{
    close();
    m_world = std::make_unique<World>(QHash<QString, QByteArray>{{u"/home/me/data/todos.json"_s, encodeTodos(todos)}});
    m_world->background.finishAll();
    m_world->hub.open(Tab::Todos);
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
    m_ui->setExpanded(true);
    m_contents = std::make_unique<PanelContents>(m_world->hub);
    m_view = std::make_unique<QQuickView>();
    m_keys = std::make_unique<PanelKeys>(*m_view, *m_ui, *m_contents, m_world->hub);
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(Qt::black);
    m_view->setInitialProperties({{u"source"_s, QVariant::fromValue(&source())}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
    m_view->setSource(source().makeView());
    QVERIFY2(m_view->status() == QQuickView::Ready,
             qPrintable(m_view->errors().isEmpty() ? QString() : m_view->errors().first().toString()));
    Theme::of(m_view->engine())->setReducedMotion(true); // what moves is where it goes at once
    m_view->resize(732, height);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_view->grabWindow();
}

void TodosPage::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_view.get(), key, modifiers);
    m_view->grabWindow(); // lays everything out
}

void TodosPage::type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(m_view.get(), c.toLatin1());
}

void TodosPage::click(QQuickItem *item)
{
    QVERIFY(item);
    m_view->grabWindow();
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
    m_view->grabWindow();
}

QList<QQuickItem *> TodosPage::rows() const
{
    QList<QQuickItem *> rows;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->property("isTodoRow").toBool())
            rows.append(item);
    }
    std::ranges::sort(rows, {}, [](QQuickItem *row) { return row->mapToScene({0, 0}).y(); });
    return rows;
}

QStringList TodosPage::titles() const
{
    QStringList titles;
    for (QQuickItem *row : rows())
        titles += row->property("title").toString();
    return titles;
}

QQuickItem *TodosPage::row(const QString &title) const
{
    for (QQuickItem *item : rows()) {
        if (item->property("title").toString() == title)
            return item;
    }
    return nullptr;
}

QQuickItem *TodosPage::list() const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->inherits("QQuickListView"))
            return item;
    }
    return nullptr;
}

QQuickItem *TodosPage::named(const QString &name) const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (nameOf(item) == name)
            return item;
    }
    return nullptr;
}

QString TodosPage::nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    return interface ? interface->text(QAccessible::Name) : QString();
}

QString TodosPage::focused() const
{
    return nameOf(m_view->activeFocusItem());
}

} // namespace velto
