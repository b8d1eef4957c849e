// What the program says on standard error.
#pragma once

#include <exception>
#include <string_view>

namespace plugincs {

/// Writes a line. Control characters, which could move a terminal's cursor, and bytes that are no
/// UTF-8 are question marks. Needs no memory.
void Say(std::string_view message);

/// Writes a line that the next one overwrites; only a terminal can do that.
void ShowPassing(std::string_view message);

/// Removes such a line, if there is one.
void ClearPassing();

/// What to tell people of a failure. Valid as long as the failure itself.
std::string_view ReasonOf(const std::exception& failure);

}  // namespace plugincs
