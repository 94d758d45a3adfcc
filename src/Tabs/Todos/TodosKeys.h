#pragma once

#include <QKeyCombination>

namespace velto {

class TodosSource;

/// What the keys of the open panel do on the Todos tab, and those that lead to it from other tabs. See VeltoSource::takeKey.
bool takeTodosKey(TodosSource &todos, QKeyCombination key, bool onShow);

} // namespace velto
