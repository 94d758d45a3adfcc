#include "Core/HookEvent.h"
