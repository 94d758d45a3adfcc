#include "Core/Prefs.h"
