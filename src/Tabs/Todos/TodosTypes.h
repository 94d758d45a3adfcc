#pragma once

#include "Tabs/Todos/TodosSource.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. QML can't create any of them.

struct TodosSourceType {
    Q_GADGET
    QML_FOREIGN(velto::TodosSource)
    QML_NAMED_ELEMENT(TodosSource)
    QML_UNCREATABLE("Made in C++")
};

struct ShownTodosType {
    Q_GADGET
    QML_FOREIGN(velto::ShownTodos)
    QML_NAMED_ELEMENT(ShownTodos)
    QML_UNCREATABLE("Made in C++")
};

struct DraftFormType {
    Q_GADGET
    QML_FOREIGN(velto::DraftForm)
    QML_NAMED_ELEMENT(DraftFormStore) // the view is DraftForm
    QML_UNCREATABLE("Made in C++")
};
