#pragma once

#include "ViewPage.h"

#include "Shell/PanelContents.h"
#include "Shell/PanelKeys.h"
#include "Tabs/Todos/TodosSource.h"

namespace velto {

/// The Todos tab with its real store and the panel's keys.
class TodosPage : public ViewPage {
    Q_OBJECT

protected:
    /// Opens the tab with these todos in Velto's own file.
    void show(const QList<Todo> &todos = {}, int height = 408);
    void close() override;
    /// Three for today, one of them overdue, and two for later.
    static QList<Todo> some();
    static QList<Todo> many(int count);

    TodosSource &source() { return m_world->todos; }
    /// The todos' rows in sight, from top to bottom.
    QList<QQuickItem *> rows() const { return rowsWith("isTodoRow"); }
    QStringList titles() const;
    QQuickItem *row(const QString &title) const;

    std::unique_ptr<PanelContents> m_contents;
    std::unique_ptr<PanelKeys> m_keys;
};

} // namespace velto
