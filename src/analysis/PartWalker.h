// The tokeniser: splits the text of one statement into parts: words (identifiers, keywords,
// numbers), single punctuation characters, runs of operator characters, and quoted literals. It
// knows no grammar and never fails.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "text/ByteSet.h"

namespace plugincs {

/// The bytes that parts are told apart by; words are made of all others.
namespace PartBytes {
inline constexpr ByteSet kSpace = ByteSet('\t', '\r') | ByteSet(" ");
inline constexpr ByteSet kQuote("'\"");
inline constexpr ByteSet kSingle(":();[]{},");
inline constexpr ByteSet kDot(".");
inline constexpr ByteSet kComparison("><=");
inline constexpr ByteSet kArithmetic("+*%/-");
inline constexpr ByteSet kWord = ~(kSpace | kQuote | kSingle | kDot | kComparison | kArithmetic);
}  // namespace PartBytes

/// Yields the parts one after another, each a view into the text, which must outlive them. Joined
/// they give the text without the white space outside its literals.
///
///   literal   '...' or "..." with its quotes; a backslash escapes the next character; one that
///             never closes runs to the end
///   single    : ( ) ; [ ] { } ,   and a '.' that no digit precedes
///   operator  a run of > < = + * % / -, in which + * % / - only follow one another:
///             "==", "+=", "=>", "<<=", but "=" "-"
///   word      a run of all other characters, '!' '&' '|' included, that may hold a '.' after a
///             digit: "3.14", "a&&b", but "!" "=" in "a != b"
class PartWalker {
  public:
    explicit PartWalker(std::string_view text) : text_(text) {}

    /// The next part; empty after the last one.
    std::string_view Next();

    /// The text after the last part.
    std::string_view Rest() const { return text_.substr(position_); }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
};

/// Appends the text's parts to `parts`; the text may be one of them. Part of a fixed interface: no
/// product code wants the list.
void PartsList(std::string_view text, std::vector<std::string>& parts);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::PartsList;
