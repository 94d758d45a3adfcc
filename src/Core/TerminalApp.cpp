#include "Core/TerminalApp.h"
