#include "Core/Process.h"
