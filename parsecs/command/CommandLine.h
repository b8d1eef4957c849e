#pragma once

#include "parsecs/command/Options.h"

/// Throws UsageError. Options and inputs may come in any order; what follows "--" is an input.
Options ReadCommandLine(int argc, const char* const* argv);
