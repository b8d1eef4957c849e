// Which bytes are UTF-8, and what stands for those that are not.
#pragma once

#include <cstddef>
#include <string_view>

namespace plugincs {

inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

/// The length of the UTF-8 sequence that begins the text, or 0. No overlong forms, no surrogates,
/// nothing above U+10FFFF.
std::size_t SequenceLength(std::string_view text);

/// Whether the sequence is a character that may control a terminal: below U+0020, or from U+007F to
/// U+009F.
bool IsControl(std::string_view sequence);

/// Whether the sequence is white space beyond ASCII: the line ends among it, and the mark at the
/// start of a file.
bool IsWideSpace(std::string_view sequence);

}  // namespace plugincs
