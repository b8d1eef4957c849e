#pragma once

#include "parsecs/Form.h"
#include "parsecs/command/Options.h"
#include "parsecs/input/Inputs.h"

/// Parses the files, hands what they became to the form, and says what went wrong. Returns the exit
/// code.
int Run(const Options& options, const Inputs& inputs, Form& form);
