// How an outline looks best where it goes.
#pragma once

#include "parsecs/outline/Outline.h"

/// Fits a terminal at the descriptor, which alone gets colours, unless the environment says
/// NO_COLOR; anything else gets all of the text.
OutlineStyle StyleFor(int descriptor);
