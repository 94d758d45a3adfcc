#include "Tabs/Todos/TodosKeys.h"

#include "Tabs/Todos/TodosSource.h"

namespace velto {

namespace {

bool takeFromAnywhere(TodosSource &todos, QKeyCombination key)
{
    if (key == (Qt::CTRL | Qt::Key_N) && todos.canAdd()) {
        Q_EMIT todos.tabWanted(Tab::Todos);
        todos.newDraft();
        return true;
    }
    if (key == (Qt::CTRL | Qt::Key_F)) {
        Q_EMIT todos.tabWanted(Tab::Todos);
        Q_EMIT todos.searchFocusWanted();
        return true;
    }
    if (key == QKeyCombination(Qt::Key_Escape) && todos.draft()) {
        todos.setDraft(std::nullopt);
        return true;
    }
    return false;
}

bool takeOnShow(TodosSource &todos, QKeyCombination key)
{
    if (key == (Qt::CTRL | Qt::Key_D)) {
        todos.finishSelected();
        return true;
    }
    if (key == (Qt::CTRL | Qt::Key_Z) && todos.pendingDone()) {
        todos.undoDone();
        return true;
    }
    const bool down = key == QKeyCombination(Qt::Key_Down);
    if ((down || key == QKeyCombination(Qt::Key_Up)) && !todos.draft()) {
        todos.shown()->move(down ? 1 : -1);
        return true;
    }
    if (key == QKeyCombination(Qt::Key_Return)) {
        todos.shown()->toggleSelected();
        return true;
    }
    return false;
}

} // namespace

bool takeTodosKey(TodosSource &todos, QKeyCombination key, bool onShow)
{
    return takeFromAnywhere(todos, key) || (onShow && takeOnShow(todos, key));
}

} // namespace velto
