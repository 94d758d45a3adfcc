#pragma once

#include <QKeyCombination>

namespace velto {

class TodosSource;

/// What the keys of the open panel do on the Todos tab, and from other tabs lead to it. See VeltoSource::takeKey.
bool takeTodosKey(TodosSource &todos, QKeyCombination key, bool onShow);

} // namespace velto
