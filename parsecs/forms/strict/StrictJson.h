// Makes valid JSON of the module's text, which writes an apostrophe as \' and copies control bytes
// and whatever bytes a path has.
#pragma once

#include <string>
#include <string_view>

namespace plugincs {

/// Repairs the strings: \' becomes an apostrophe, a raw control byte its JSON escape, and a byte
/// that belongs to no UTF-8 sequence U+FFFD. A text that needs none of it comes back unchanged.
std::string StrictJson(std::string_view text);

}  // namespace plugincs
