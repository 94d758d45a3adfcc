#pragma once

#include "Tabs/Todos/Todo.h"

#include <QByteArray>

namespace velto {

/// The list as Velto's own file holds it: a JSON array of objects with the names of the fields as keys, those of a comment
/// likewise. All of them are there; other members of an object are kept (`unknown`) and written again, byte for byte.
QByteArray encodeTodos(const QList<Todo> &todos);
/// Nothing if it isn't such a list, whole. Todos with a repeated id, or with a draft's, get another one.
std::optional<QList<Todo>> decodeTodos(const QByteArray &json);

} // namespace velto
