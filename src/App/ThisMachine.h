#pragma once

#include "Core/Http.h"
#include "Hub/Desktop.h"
#include "Platform/FileWriter.h"
#include "Platform/Linux/CanberraSounds.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Places.h"
#include "Platform/Posix/JsonDefaults.h"
#include "Platform/Posix/PosixFileTree.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/ThreadPoolBackground.h"

namespace velto {

/// Where this user's files are.
Places placesOfThisMachine();

/// The real services that the stores need, in the order in which they depend on each other.
struct ThisMachine {
    ThisMachine();
    ~ThisMachine();

    Desktop desktop() { return desktopWith(defaults, platform.keychain); }
    /// The same, but for where settings and secrets are kept.
    Desktop desktopWith(Defaults &ofSettings, Keychain &ofSecrets);

    Places places;
    const std::unique_ptr<Clock> ownClock;
    Clock &clock;
    PosixFiles files;
    PosixFileTree fileTree;
    ThreadPoolBackground writing{1}; ///< its own thread, so that no other work delays saving
    FileWriter writer{writing, clock};
    JsonDefaults defaults;
    LinuxPlatform platform;
    PosixToolRunner tools; ///< takes the environment as it is now: what the platform chose for us alone is gone from it
    ThreadPoolBackground background; ///< goes first: what it still does may ask the keyring
    CanberraSounds sounds;
    Http http{background};
};

} // namespace velto
