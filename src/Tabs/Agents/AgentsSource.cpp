#include "Tabs/Agents/AgentsSource.h"
