#include "Platform/Posix/PosixToolRunner.h"
