#pragma once

#include "parsecs/options/Options.h"

namespace plugincs {

/// Throws UsageError. Options and inputs may come in any order; what follows "--" is an input.
Options ReadCommandLine(int argc, const char* const* argv);

}  // namespace plugincs
