#include "Tabs/Agents/Agent.h"
