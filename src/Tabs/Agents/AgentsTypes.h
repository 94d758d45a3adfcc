#pragma once

#include "Tabs/Agents/AgentsSource.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

struct AgentsSourceType {
    Q_GADGET
    QML_FOREIGN(velto::AgentsSource)
    QML_NAMED_ELEMENT(AgentsSource)
    QML_UNCREATABLE("Made in C++")
};
