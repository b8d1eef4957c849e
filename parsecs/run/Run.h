#pragma once

#include "parsecs/form/Form.h"
#include "parsecs/input/Inputs.h"
#include "parsecs/options/Options.h"

namespace plugincs {

/// Parses the files, hands what they became to the form, and says what went wrong. Returns the exit
/// code.
int Run(const Options& options, const Inputs& inputs, Form& form);

}  // namespace plugincs
