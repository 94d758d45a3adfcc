#include "Shell/PanelKeys.h"

#include "Core/Hub.h"
#include "Shell/PanelContents.h"
#include "Shell/UI.h"
#include "Tabs/Todos/TodosSource.h"

#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>

namespace velto {

PanelKeys::PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, Hub &hub, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_ui(ui)
    , m_contents(contents)
    , m_hub(hub)
{
    m_window.installEventFilter(this);
}

bool PanelKeys::textFieldFocused() const
{
    const QQuickItem *item = m_window.activeFocusItem();
    return item && (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit"));
}

bool PanelKeys::controlFocused() const
{
    const QQuickItem *item = m_window.activeFocusItem();
    return textFieldFocused() || (item && item->activeFocusOnTab());
}

void PanelKeys::clearFocus()
{
    // The window itself would hand the focus back to whatever had it last.
    while (QQuickItem *item = m_window.activeFocusItem()) {
        item->setFocus(false, Qt::OtherFocusReason);
        if (m_window.activeFocusItem() == item)
            break;
    }
}

void PanelKeys::escape()
{
    if (textFieldFocused())
        clearFocus();
    else if (m_hub.todos()->draft())
        m_hub.todos()->setDraft(std::nullopt);
    else
        m_ui.close();
}

bool PanelKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_ui.expanded())
        press(*static_cast<QKeyEvent *>(event));
    return QObject::eventFilter(watched, event);
}

void PanelKeys::press(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool moves = key.key() == Qt::Key_Down || key.key() == Qt::Key_Up;
    if (key.isAutoRepeat() && !moves)
        return;
    const bool control = modifiers == Qt::ControlModifier;
    if (control && key.key() >= Qt::Key_1 && key.key() <= Qt::Key_5)
        m_contents.openAt(key.key() - Qt::Key_1);
    else if (control && key.key() == Qt::Key_Comma)
        m_ui.askForSettings();
    else if (m_ui.sheetOpen())
        return; // a sheet or a menu has keys of its own
    else if (key.key() == Qt::Key_Escape)
        escape();
    else if (control)
        pressWithControl(key.key());
    else if (modifiers == Qt::NoModifier && m_hub.selected() == Tab::Todos)
        pressInList(key.key());
}

void PanelKeys::pressWithControl(int key)
{
    TodosSource &todos = *m_hub.todos();
    const bool hasTodos = m_hub.tabs().contains(Tab::Todos);
    const bool onTodos = m_hub.selected() == Tab::Todos;
    if (key == Qt::Key_N && hasTodos && todos.canAdd()) {
        m_hub.open(Tab::Todos);
        todos.newDraft();
    } else if (key == Qt::Key_F && hasTodos) {
        m_hub.open(Tab::Todos);
        todos.askForSearch();
    } else if (key == Qt::Key_D && onTodos) {
        todos.finishSelected();
    } else if (key == Qt::Key_Z && onTodos) {
        todos.undoDone();
    }
}

void PanelKeys::pressInList(int key)
{
    TodosSource &todos = *m_hub.todos();
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Up:
        if (todos.draft())
            break;
        clearFocus();
        todos.move(key == Qt::Key_Down ? 1 : -1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!controlFocused()) // it presses what has the focus
            todos.toggleSelected();
        break;
    default:
        break;
    }
}

} // namespace velto
