#include "Core/Hooks.h"
