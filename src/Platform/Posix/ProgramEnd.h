#pragma once

#include <chrono>
#include <functional>

namespace velto {

/// From now on the program has this long to end in order. Whatever still hangs then, be it a disk, a keyring or a name server, it
/// ends with this exit status all the same.
void endsWithin(std::chrono::milliseconds limit, int status);

/// Replaces the program with a fresh start of itself, with these arguments. Returns only if that isn't possible.
void startAnew(char **argv);

/// Has `last` done, and nothing after it, should the program end by itself from now on: the toolkit calls exit() when the display
/// is gone. An empty one takes it back. UI thread only.
void beforeExit(std::function<void()> last);

} // namespace velto
