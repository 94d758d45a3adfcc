#include "ViewWindow.h"

#include "Warnings.h"

#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

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

template <typename Matches> QQuickItem *first(const QList<QQuickItem *> &items, Matches matches)
{
    const auto found = std::ranges::find_if(items, matches);
    return found == items.end() ? nullptr : *found;
}

} // namespace

void ViewWindow::init()
{
    Warnings::start();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

void ViewWindow::close()
{
    m_tabOrder.reset();
    m_view.reset();
}

void ViewWindow::cleanup()
{
    close();
    QLocale::setDefault(QLocale::system());
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void ViewWindow::begin()
{
    close();
    m_view = std::make_unique<QQuickView>();
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setColor(Qt::black);
}

QQuickItem *ViewWindow::showQml(const QString &qml, QSize size, const QVariantMap &properties)
{
    begin();
    QQmlComponent component(m_view->engine());
    component.setData((u"import QtQuick\nimport Velto.Design\n"_s + qml).toUtf8(), QUrl(u"qrc:/test.qml"_s));
    auto *item = qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties));
    if (!item) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    item->setParent(m_view.get());
    item->setParentItem(m_view->contentItem());
    appear(size);
    return item;
}

void ViewWindow::appear(QSize size)
{
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->resize(size);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_view->grabWindow(); // lays everything out
}

void ViewWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_view.get(), key, modifiers);
    m_view->grabWindow();
}

void ViewWindow::type(const QString &text)
{
    for (const QChar c : text)
        QTest::keyClick(m_view.get(), c.toLatin1());
}

void ViewWindow::click(QQuickItem *item)
{
    QVERIFY(item);
    m_view->grabWindow();
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
    m_view->grabWindow();
}

QList<QQuickItem *> ViewWindow::items() const
{
    return itemsBelow(m_view->contentItem());
}

QList<QQuickItem *> ViewWindow::rowsWith(const char *property) const
{
    QList<QQuickItem *> rows = items();
    rows.removeIf([&](QQuickItem *item) { return !item->property(property).toBool(); });
    std::ranges::sort(rows, {}, [](QQuickItem *row) { return row->mapToScene({0, 0}).y(); });
    return rows;
}

QQuickItem *ViewWindow::list() const
{
    return first(items(), [](QQuickItem *item) { return item->inherits("QQuickListView"); });
}

QQuickItem *ViewWindow::named(const QString &name) const
{
    return first(items(), [&](QQuickItem *item) { return nameOf(item) == name; });
}

QQuickItem *ViewWindow::button(const QString &name) const
{
    return first(items(), [&](QQuickItem *item) { return item->activeFocusOnTab() && nameOf(item) == name; });
}

QString ViewWindow::nameOf(QQuickItem *item, QAccessible::Text kind)
{
    QAccessibleInterface *interface = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    return interface ? interface->text(kind) : QString();
}

QString ViewWindow::focused() const
{
    return nameOf(m_view->activeFocusItem());
}

} // namespace velto
