#include "Platform/Posix/JsonDefaults.h"
