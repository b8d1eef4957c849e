// Whether what was asked for can be done: what is refused says what to use instead.
#pragma once

#include "parsecs/input/Inputs.h"
#include "parsecs/options/Options.h"

namespace plugincs {

/// Standard output has one name, which is empty.
void SettleOutput(Options& options);

/// Throws UsageError for options that do not go together, and for inputs that are too many for
/// their form and output.
void CheckPlan(const Options& options);

/// Throws UsageError for an output that would be outside of its folder or replace an input.
void CheckOutputs(const Options& options, const Inputs& inputs);

}  // namespace plugincs
