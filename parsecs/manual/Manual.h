// Texts about the program, all made from the table of options.
#pragma once

#include <string>

#include "parsecs/options/Options.h"

namespace plugincs {

/// For people at a terminal: no line is longer than 80 columns.
std::string HelpText();

/// A page for man, in section 1.
std::string ManPage();

/// A script that completes the program's arguments in bash, zsh or fish.
std::string Completion(const std::string& shell);

/// The text that was asked for.
std::string AboutText(const Options& options);

}  // namespace plugincs
