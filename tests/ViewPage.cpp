#include "ViewPage.h"

#include "Design/Theme.h"

#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace velto {

void ViewPage::init()
{
    ViewWindow::init();
    begin();
}

void ViewPage::begin(QHash<QString, QByteArray> files)
{
    ViewWindow::begin();
    m_world = std::make_unique<World>(std::move(files));
    m_world->background.finishAll();
    m_ui = std::make_unique<UI>(m_world->clock, m_world->prefs);
}

void ViewPage::close()
{
    ViewWindow::close();
    m_ui.reset();
    m_world.reset();
}

void ViewPage::show(VeltoSource &source, int height, bool still)
{
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setInitialProperties({{u"source"_s, QVariant::fromValue(&source)}, {u"ui"_s, QVariant::fromValue(m_ui.get())}});
    m_view->setSource(source.makeView());
    QVERIFY2(m_view->status() == QQuickView::Ready,
             qPrintable(m_view->errors().isEmpty() ? QString() : m_view->errors().first().toString()));
    if (still)
        Theme::of(m_view->engine())->setReducedMotion(true);
    appear({732, height});
}

} // namespace velto
