#pragma once
#include "presets.h"

/// What the local monitors of the program make of the event; nil where one has kept it.
NSEvent* eventAfterMonitors(NSEvent* event);
