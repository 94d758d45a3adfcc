#pragma once

#include "TodosView/TodosPage.h"

namespace velto {

/// The tab as a person works it with the keyboard.
class TodosKeysTest : public TodosPage {
    Q_OBJECT

private Q_SLOTS:
};

} // namespace velto
