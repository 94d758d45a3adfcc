#pragma once

#include "Core/DateModel.h"

#include <QAbstractItemModel>
#include <QtQml/qqml.h>

// What the calendar stands on, for views, without the core having to know of QML.

struct DateModelType {
    Q_GADGET
    QML_FOREIGN(velto::DateModel)
    QML_NAMED_ELEMENT(DateModel)
    QML_UNCREATABLE("Made in C++")
};
