// Any bytes as a JSON string.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace plugincs {

/// How many bytes `WriteJsonString` may need for a text of that size.
constexpr std::size_t JsonStringRoom(std::size_t size) { return 6 * size; }

/// Writes what stands between the quotes to `out`, which must have `JsonStringRoom`, and returns
/// the end of it. Valid JSON in valid UTF-8: each byte that belongs to no sequence becomes U+FFFD.
char* WriteJsonString(std::string_view text, char* out);

/// The whole string, with its quotes.
std::string JsonString(std::string_view text);

}  // namespace plugincs
