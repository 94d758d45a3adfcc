#include "Core/HookInstaller.h"
