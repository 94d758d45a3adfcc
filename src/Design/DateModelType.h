#pragma once

#include "Core/DateModel.h"

#include <QAbstractItemModel>
#include <QtQml/qqml.h>

// What the calendar stands on, for views, without the core having to know of QML.

// Qt 6.4 declares the base of all models only beside the controls.
struct CalendarRowsType {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

struct DateModelType {
    Q_GADGET
    QML_FOREIGN(velto::DateModel)
    QML_NAMED_ELEMENT(DateModel)
    QML_UNCREATABLE("Made in C++")
};
