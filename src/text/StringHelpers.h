// Free functions over byte strings.
//
// One character is one byte, compared by value; bytes 128 to 255 are ordinary characters of no
// class. Every function is defined for every input, the empty text included, keeps no state, is
// linear in its text, and throws nothing but std::bad_alloc. A function that returns a
// std::string_view returns a view into its argument, valid as long as the argument's bytes are.
// `ConvertWhiteSpacesToSingleSpace`, `LastWord`, `LastWordNoDots`, `IndexOf`, `FileName` and
// `BothAreSpaces` are part of a fixed interface, and no product code calls them.
//
// Three sets of white space are in use, and they differ:
//   trim set     blank, \n, \r, \t, \f, \v   (`ltrim`, `rtrim`, `trim`, `TrimAndReduce`)
//   reduce set   blank, \n, \r, \t           (`ConvertWhiteSpacesToSingleSpace`, `TrimAndReduce`)
//   blank alone                              (`LastWord`, `LastWordNoDots`)
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace plugincs {

/// The text from its first character outside the trim set on.
std::string_view ltrim(std::string_view text);

/// The text up to and including its last character outside the trim set.
std::string_view rtrim(std::string_view text);

/// The text without the trim set's characters at either end.
std::string_view trim(std::string_view text);

/// Every run of the reduce set's characters becomes one blank, at both ends too.
std::string ConvertWhiteSpacesToSingleSpace(std::string text);

/// `trim` of `ConvertWhiteSpacesToSingleSpace`.
std::string TrimAndReduce(std::string_view text);

/// `TrimAndReduce` in place: returns a view into the text's own bytes. `readable` is how many bytes
/// may be read from the text's beginning, past its end too: 64 or more make short texts cheaper.
std::string_view TrimAndReduceInPlace(std::span<char> text, std::size_t readable = 0);

/// Replaces every occurrence of `from`, left to right without overlap; inserted text is never
/// searched again. An empty `from` changes nothing.
void replaceAll(std::string& text, std::string_view from, std::string_view to);

/// The longest prefix of ASCII letters, digits, '_' and '#'.
std::string_view FirstWord(std::string_view text);

/// Everything before the last blank (not the last word itself); the whole text without a blank.
std::string_view LastWord(std::string_view text);

/// The last word of a declaration without its base-class clause: cuts at the last colon, together
/// with the one character before it, unless the colon comes first; then keeps what follows the
/// last blank, unless that blank comes last.
std::string_view WithoutBaseClause(std::string_view text);

/// `WithoutBaseClause`; the result is also stored into `text`.
std::string LastWordNoDots(std::string& text);

/// The characters that `EscapeString` puts a backslash before.
inline constexpr std::string_view kEscaped = "'\"\\";

/// Puts a backslash before every double quote, apostrophe and backslash; every other byte stays
/// as it is. The result is also stored into `text`.
std::string EscapeString(std::string& text);

/// Writes `EscapeString` of the text to `out`, which must have room for twice its size and must not
/// overlap it; returns the end of what was written.
char* WriteEscaped(std::string_view text, char* out);

/// Whether `target` occurs anywhere in `text`; an empty target always does.
bool Contains(std::string_view text, std::string_view target);

/// Despite its name the same substring test as `Contains`: word boundaries play no part.
bool ContainsWord(std::string_view text, std::string_view target);

/// The first position of `target` in `text`, or -1.
std::int64_t IndexOf(std::string_view text, std::string_view target);

/// Whether `target` occurs outside double-quoted stretches and outside every kind of bracket:
/// braces, parentheses and angle brackets are counted, and only where all three counts are zero
/// is the target looked for. Apostrophes, backslashes and square brackets mean nothing here.
bool OutsideStringMatch(std::string_view text, std::string_view target);

/// The path's part after its last slash or backslash.
std::string_view FileNameWithExtension(std::string_view path);

/// `FileNameWithExtension` up to its last dot.
std::string_view FileName(std::string_view path);

/// Whether both characters are blanks.
bool BothAreSpaces(char a, char b);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::BothAreSpaces;
using plugincs::Contains;
using plugincs::ContainsWord;
using plugincs::ConvertWhiteSpacesToSingleSpace;
using plugincs::EscapeString;
using plugincs::FileName;
using plugincs::FileNameWithExtension;
using plugincs::FirstWord;
using plugincs::IndexOf;
using plugincs::LastWord;
using plugincs::LastWordNoDots;
using plugincs::ltrim;
using plugincs::OutsideStringMatch;
using plugincs::replaceAll;
using plugincs::rtrim;
using plugincs::trim;
using plugincs::TrimAndReduce;
