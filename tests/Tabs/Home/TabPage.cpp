#include "Tabs/Home/TabPage.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

void TabPage::show(VeltoSource &source)
{
    ViewPage::show(source, 430);
    m_ui->openFocused();
}

void TabPage::click(QQuickItem *item)
{
    QVERIFY(item);
    item->forceActiveFocus();
    m_view->grabWindow();
    QTest::qWait(200);
    ViewPage::click(item);
}

QStringList TabPage::tabRound(QStringList &faults)
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
            faults += nameOf(item) + u" is out of sight"_s;
        round += nameOf(item);
    }
    for (QQuickItem *item : items()) {
        if (item->activeFocusOnTab() && item->isEnabled() && (nameOf(item).isEmpty() || !round.contains(nameOf(item))))
            faults += u"'%1' isn't reached"_s.arg(nameOf(item));
    }
    return round;
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

} // namespace velto
