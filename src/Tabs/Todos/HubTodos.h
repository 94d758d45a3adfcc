#pragma once

#include "Tabs/Quillbox/VeltoSnapshot.h"
#include "Tabs/Todos/Todo.h"

#include <QJsonObject>

namespace velto {

/// A change of a todo as a memory hub takes it: a POST of this body to this path.
struct HubCall {
    QString path;
    QJsonObject body;
};

/// The todos of a hub's snapshot, in its order.
QList<Todo> todosOf(const VeltoSnapshot &snapshot);
/// The hub knows a todo by its title: this writes a new one, or replaces the one of the same name.
HubCall hubSave(const Todo &todo);
HubCall hubDone(qint64 id);

} // namespace velto
