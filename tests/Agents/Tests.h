#pragma once

#include "RunTests.h"
