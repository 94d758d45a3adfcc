#pragma once

#include <QString>
#include <optional>

namespace velto {

struct CommandLine;

/// The two ways to run that draw pictures into files and end, with nothing on a screen and without contacting a running Velto.
/// Call choosePictures() before there is an application object, takePictures() with it.

/// Whether the command line asks for pictures; if so, has the toolkit draw without a display.
bool choosePictures(const CommandLine &commandLine);
/// Draws what it asks for. Returns why that failed, in one sentence for the user.
std::optional<QString> takePictures(const CommandLine &commandLine);

} // namespace velto
