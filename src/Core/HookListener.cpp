#include "Core/HookListener.h"
