#include "Platform/Posix/PosixFiles.h"
