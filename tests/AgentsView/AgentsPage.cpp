#include "AgentsView/AgentsPage.h"

#include "Warnings.h"

#include <QAccessible>
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

} // namespace

void AgentsPage::init()
{
    Warnings::start();
    m_world = std::make_unique<World>();
    m_world->background.finishAll();
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
}

void AgentsPage::cleanup()
{
    m_tabOrder.reset();
    m_view.reset();
    m_ui.reset();
    m_world.reset();
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void AgentsPage::show()
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

QList<QQuickItem *> AgentsPage::rows() const
{
    QList<QQuickItem *> rows;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->property("isAgentRow").toBool())
            rows.append(item);
    }
    std::ranges::sort(rows, {}, [](QQuickItem *row) { return row->mapToScene({0, 0}).y(); });
    return rows;
}

QQuickItem *AgentsPage::row(const QString &id) const
{
    for (QQuickItem *item : rows()) {
        if (item->property("agentId").toString() == id)
            return item;
    }
    return nullptr;
}

QQuickItem *AgentsPage::button(const QString &name) const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->activeFocusOnTab() && nameOf(item) == name)
            return item;
    }
    return nullptr;
}

bool AgentsPage::says(const QString &text) const
{
    return std::ranges::any_of(itemsBelow(m_view->contentItem()), [&](QQuickItem *item) { return nameOf(item) == text; });
}

QQuickItem *AgentsPage::list() const
{
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (item->inherits("QQuickListView"))
            return item;
    }
    return nullptr;
}

void AgentsPage::click(QQuickItem *item)
{
    QVERIFY(item);
    m_view->grabWindow(); // lays everything out
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
}

QString AgentsPage::nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace velto
