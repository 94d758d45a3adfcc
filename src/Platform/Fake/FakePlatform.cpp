#include "Platform/Fake/FakePlatform.h"
