#pragma once

#include "Tabs/Connect/ConnectSource.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

struct ConnectSourceType {
    Q_GADGET
    QML_FOREIGN(velto::ConnectSource)
    QML_NAMED_ELEMENT(ConnectSource)
    QML_UNCREATABLE("Made in C++")
};

struct CalendarFormType {
    Q_GADGET
    QML_FOREIGN(velto::CalendarForm)
    QML_NAMED_ELEMENT(CalendarForm)
    QML_UNCREATABLE("Made in C++")
};

struct McpFormType {
    Q_GADGET
    QML_FOREIGN(velto::McpForm)
    QML_NAMED_ELEMENT(McpForm)
    QML_UNCREATABLE("Made in C++")
};

struct TokenSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::TokenSettings)
    QML_NAMED_ELEMENT(TokenSettings)
    QML_UNCREATABLE("Made in C++")
};
