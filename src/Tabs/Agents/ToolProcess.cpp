#include "Tabs/Agents/ToolProcess.h"
