#pragma once

#include "Tabs/Todos/Todo.h"

namespace velto {

/// The day that texts are made for, and the one after it.
struct Days {
    QString today;
    QString tomorrow;

    bool operator==(const Days &) const = default;
};

/// "Today", "Tomorrow", "Overdue · Fri, Nov 20", or the date; empty without one.
QString dueText(const Todo &todo, const Days &days);
/// The person it waits on, if that isn't the user.
QString personText(const Todo &todo);
/// The whole row as a screen reader says it.
QString accessibleSummary(const Todo &todo, const Days &days);

} // namespace velto
