#pragma once

// The generated headers, whose calls go through WaylandLibrary; one of them has an argument called "namespace".
#include "Platform/Linux/Wayland/WaylandLibrary.h"

#define namespace scope
#include "velto-wlr-layer-shell-unstable-v1.h"
#undef namespace
#include "velto-blur.h"
#include "velto-ext-data-control-v1.h"
#include "velto-plasma-window-management.h"
#include "velto-wlr-foreign-toplevel-management-unstable-v1.h"
