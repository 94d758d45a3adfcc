#pragma once

#include "Platform/Fake/FakePanelWindow.h"
#include "Settings/SettingsStore.h"
#include "Settings/Welcome.h"
#include "World.h"

#include <QTemporaryDir>

namespace velto {

/// The settings and the welcome on a fake desktop.
struct Desk : World {
    FakeLoginItem loginItem;
    FakeHotKey hotKey;
    QTemporaryDir folder;
    Places here{folder.path(), {}, {}, folder.path()};
    SettingsStore::Needs needs{hub,      agents,    quillbox, prefs,       background, clock,
                               defaults, writer,    keychain, folderPanel, loginItem,  terminal,
                               hotKey,   installer, tools,    here,        4747,       QStringLiteral("1.2")};
    SettingsStore settings{needs};
    Welcome::Needs welcome{agents, prefs, background, tools, loginItem, hotKey, here};

    Desk()
    {
        background.finishAll();
        wait(0);
    }
};

} // namespace velto
