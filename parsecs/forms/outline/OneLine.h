#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace plugincs {

/// The text on one line of at most `room` bytes, in valid UTF-8: white space and control bytes are
/// single blanks, and "..." stands for what is cut off.
std::string OneLine(std::string_view text, std::size_t room = std::string::npos - 1);

}  // namespace plugincs
