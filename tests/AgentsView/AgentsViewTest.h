#pragma once

#include "World.h"

#include "Design/TabOrder.h"
#include "Shell/UI.h"

#include <QQuickView>
#include <QTest>
#include <memory>

class QQuickItem;

namespace velto {

/// The tab as a person sees it and works it with the keyboard, on the real store.
class AgentsViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyStateDrawsWithoutAWarning_data();
    void everyStateDrawsWithoutAWarning();
    void sevenWaitingFoldAndSixDoNot();
    void connectingIsAgreedToInASheet();
    void aRowKeepsItsIdentityAndItsMenuOverARefresh();
    void aPageAtItsTopStaysThere();
    void closingThePanelClosesWhatIsOpenOverIt();
    void theKeyboardGoesOnWhereARowGoes();
    void theKeyboardReachesEveryControl();
    void aRefreshTouchesNoMoreThanHasChanged();

private:
    void show();
    QQuickItem *row(const QString &id) const;
    QList<QQuickItem *> rows() const;
    QQuickItem *button(const QString &name) const;
    QQuickItem *list() const;
    void click(QQuickItem *item);

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
