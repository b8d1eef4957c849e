#pragma once

#include <string>
#include <vector>

namespace plugincs {

/// The names that the file holds, standard input for "-"; each ends in `end`, the last one perhaps
/// in nothing; a line feed may have a carriage return before it. Empty ones are left out. Throws
/// UsageError when it cannot be read.
std::vector<std::string> ReadInputList(const std::string& file, char end);

}  // namespace plugincs
