#pragma once

#include <cstddef>

#include "parsecs/options/Options.h"

namespace plugincs {

/// Whether somebody reads the output as it comes.
bool GoesToTerminal(const Options& options);

/// Whether the output has colours: on a terminal, unless NO_COLOR is set or the options say else.
bool WantsColour(const Options& options);

/// The columns of standard output's terminal; 0 if it does not tell.
std::size_t TerminalWidth();

/// Whether somebody reads standard error as it comes.
bool HasErrorTerminal();

}  // namespace plugincs
