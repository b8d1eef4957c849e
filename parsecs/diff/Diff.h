#pragma once

#include "parsecs/diff/States.h"
#include "parsecs/options/Options.h"

namespace plugincs {

/// Compares the states and writes what has changed. Returns the exit code: 0 for nothing, 1 for
/// something, kNotWritten when some file could not be read. Throws std::runtime_error when the
/// output cannot be written.
int Diff(const Options& options, States& states);

}  // namespace plugincs
