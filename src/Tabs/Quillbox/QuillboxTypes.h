#pragma once

#include "Tabs/Quillbox/QuillboxSource.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

struct QuillboxSourceType {
    Q_GADGET
    QML_FOREIGN(velto::QuillboxSource)
    QML_NAMED_ELEMENT(QuillboxSource)
    QML_UNCREATABLE("Made in C++")
};
