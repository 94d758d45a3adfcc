#pragma once

#include "Core/Tab.h"
#include "Core/UI.h"
#include "Core/VeltoSource.h"

#include <QAbstractItemModel>
#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. QML can't create any of them.

namespace velto::tab_type {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(velto)
QML_NAMED_ELEMENT(Velto)
} // namespace velto::tab_type

struct VeltoSourceType {
    Q_GADGET
    QML_FOREIGN(velto::VeltoSource)
    QML_NAMED_ELEMENT(VeltoSource)
    QML_UNCREATABLE("Made in C++")
};

// Qt 6.4 declares the base of all models only beside the controls.
struct ItemModelType {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

struct UIType {
    Q_GADGET
    QML_FOREIGN(velto::UI)
    QML_NAMED_ELEMENT(UI)
    QML_UNCREATABLE("Made in C++")
};
