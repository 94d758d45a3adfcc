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

qsizetype TabPage::framesWhileNothingChanges(int milliseconds)
{
    QTest::qWait(500); // until all fades are over
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
