#pragma once

#include "Settings/SettingsStore.h"
#include "Settings/Welcome.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store. None can be made there.

struct SettingsStoreType {
    Q_GADGET
    QML_FOREIGN(velto::SettingsStore)
    QML_NAMED_ELEMENT(SettingsStore)
    QML_UNCREATABLE("Made in C++")
};

struct GeneralSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::GeneralSettings)
    QML_NAMED_ELEMENT(GeneralSettings)
    QML_UNCREATABLE("Made in C++")
};

struct ModuleSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::ModuleSettings)
    QML_NAMED_ELEMENT(ModuleSettings)
    QML_UNCREATABLE("Made in C++")
};

struct ClaudeSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::ClaudeSettings)
    QML_NAMED_ELEMENT(ClaudeSettings)
    QML_UNCREATABLE("Made in C++")
};

struct QuillboxSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::QuillboxSettings)
    QML_NAMED_ELEMENT(QuillboxSettings)
    QML_UNCREATABLE("Made in C++")
};

struct AboutSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::AboutSettings)
    QML_NAMED_ELEMENT(AboutSettings)
    QML_UNCREATABLE("Made in C++")
};

struct WelcomeType {
    Q_GADGET
    QML_FOREIGN(velto::Welcome)
    QML_NAMED_ELEMENT(Welcome)
    QML_UNCREATABLE("Made in C++")
};

struct SettingsTokensType {
    Q_GADGET
    QML_FOREIGN(velto::TokenSettings)
    QML_NAMED_ELEMENT(TokenSettings)
    QML_UNCREATABLE("Made in C++")
};
