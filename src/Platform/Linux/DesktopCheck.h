#pragma once

#include "Platform/Support.h"

#include <QList>
#include <QString>

namespace velto {

struct LinuxPlatform;
class XcbServer;

/// One thing that the desktop or the machine provides.
struct Checked {
    QString what;
    Support support; ///< whether, and if not, what to do about it
    QString detail; ///< which, where or how; may be empty
};

/// What the display offers, for a report. Needs the application object; asks the session bus and waits for it, some seconds at
/// most, and changes nothing: a key that is grabbed for this is given back.
QList<Checked> checkDisplay(LinuxPlatform &platform);
/// The same for what the session offers, with a display or without.
QList<Checked> checkSession(const XcbServer &server);

} // namespace velto
