// The name in a function's declaration.
#pragma once

#include <string>
#include <string_view>

namespace plugincs {

/// The simple name of the function that a declaration header declares: the word directly before
/// the parameter list, without return type, modifiers, pointer stars or generic arguments.
///
/// Purely textual, so that type parameters and dots give odd names, or none: hosts know them so
/// (docs/records.md). Throws std::bad_alloc.
std::string functionName(std::string_view text);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::functionName;
