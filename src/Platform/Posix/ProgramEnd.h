#pragma once

#include <chrono>

namespace velto {

/// From now on the program has this long to end in order. Whatever still hangs then, be it a disk, a keyring or a name server, it
/// ends with this exit status all the same.
void endsWithin(std::chrono::milliseconds limit, int status);

} // namespace velto
