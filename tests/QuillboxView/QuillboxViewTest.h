#pragma once

#include "World.h"

#include "Design/TabOrder.h"
#include "Shell/UI.h"

#include <QQuickView>
#include <QTest>
#include <memory>

class QQuickItem;

namespace velto {

/// The tab on the real store, in a window of its own. A warning of QML fails the test.
class QuillboxViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyStateDrawsWithoutAWarning_data();
    void everyStateDrawsWithoutAWarning();
    void theAnswerOpensByKeysAndByPointer();
    void theArrowsGoThroughTheRows();
    void aRowKeepsTheKeyboardOverASnapshot();

private:
    void show();
    /// What a screen reader finds, from top to bottom.
    QStringList words() const;
    QQuickItem *named(const QString &name) const;

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
};

} // namespace velto
