#pragma once

#include <QObject>

class QKeyEvent;
class QQuickItem;
class QQuickWindow;

namespace velto {

class Hub;
class PanelContents;
class TodosSource;
class UI;

/// The keyboard of the open panel. Every key goes on to the views, handled or not. UI thread only.
class PanelKeys : public QObject {
    Q_OBJECT
public:
    /// Listens to the keys of `window`, which outlives this.
    PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, Hub &hub, TodosSource &todos, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void escape();
    void control(const QKeyEvent &key);
    void todosControl(const QKeyEvent &key);
    void todosPlain(const QKeyEvent &key);
    void enterPage();
    bool onTodos() const;
    bool textFieldFocused() const;
    bool focusTakesReturn() const;
    void clearFocus();
    void leaveHidden();

    QQuickWindow &m_window;
    UI &m_ui;
    PanelContents &m_contents;
    Hub &m_hub;
    TodosSource &m_todos;
};

} // namespace velto
