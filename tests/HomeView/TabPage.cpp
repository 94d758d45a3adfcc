#include "HomeView/TabPage.h"

#include "Warnings.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

void TabPage::init()
{
    Warnings::start();
    m_world = std::make_unique<World>();
    m_world->background.finishAll();
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
}

void TabPage::cleanup()
{
    m_tabOrder.reset();
    m_view.reset();
    m_ui.reset();
    m_world.reset();
    const QStringList warnings = Warnings::stop();
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
}

void TabPage::show(VeltoSource &source)
{
    m_view = std::make_unique<QQuickView>();
    m_tabOrder = std::make_unique<TabOrder>(*m_view);
    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setColor(Qt::black);
    m_view->setInitialProperties({{u"source"_s, QVariant::fromValue(&source)}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
    m_view->setSource(source.makeView());
    QVERIFY2(m_view->status() == QQuickView::Ready,
             qPrintable(m_view->errors().isEmpty() ? QString() : m_view->errors().first().toString()));
    m_view->resize(732, 430);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_ui->openFocused();
}

QList<QQuickItem *> TabPage::itemsBelow(QQuickItem *root)
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

QQuickItem *TabPage::named(const QString &name) const
{
    QQuickItem *found = nullptr;
    for (QQuickItem *item : itemsBelow(m_view->contentItem())) {
        if (nameOf(item) == name)
            found = item;
    }
    return found;
}

QStringList TabPage::tabRound()
{
    QStringList round;
    const QQuickItem *first = nullptr;
    for (int i = 0; i < 200; ++i) {
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QQuickItem *item = m_view->activeFocusItem();
        if (!item || item == first)
            break;
        if (!first)
            first = item;
        // The page follows, at the pace of its animation.
        const auto inSight = [&] {
            m_view->grabWindow();
            const double y = item->mapToItem(m_view->contentItem(), {0, 0}).y();
            return y >= -1 && y + item->height() <= m_view->height() + 1;
        };
        if (!QTest::qWaitFor(inSight, 2000))
            round.append(u"out of sight: "_s + nameOf(item));
        round.append(nameOf(item));
    }
    return round;
}

void TabPage::click(QQuickItem *item)
{
    QVERIFY(item);
    item->forceActiveFocus(); // brings it into sight
    m_view->grabWindow();
    QTest::qWait(200);
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middle.toPoint());
}

qsizetype TabPage::framesWhileNothingChanges(int milliseconds)
{
    QTest::qWait(500); // what fades has come to rest
    m_view->grabWindow();
    QCoreApplication::processEvents();
    const QSignalSpy frames(m_view.get(), &QQuickWindow::frameSwapped);
    m_world->refresh();
    m_world->wait(milliseconds);
    m_world->background.finishAll();
    QTest::qWait(100);
    return frames.count();
}

QString TabPage::nameOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace velto
