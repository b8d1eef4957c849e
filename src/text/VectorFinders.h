// The ways to find sets that use vector instructions.
#pragma once

#include <span>

#include "text/ByteSets.h"

namespace plugincs {

/// Those that this machine can run, the best one last; none where there are none for its kind.
std::span<const SetFinder> VectorFinders();

}  // namespace plugincs
