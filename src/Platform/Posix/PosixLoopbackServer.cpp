#include "Platform/Posix/PosixLoopbackServer.h"
