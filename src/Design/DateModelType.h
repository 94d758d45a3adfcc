#pragma once

#include "Core/DateModel.h"

#include <QAbstractItemModel>
#include <QtQml/qqml.h>

// The calendar's model for views, without Core having to know QML.

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
