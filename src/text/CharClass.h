// ASCII character classes on single bytes. Not <cctype>: its tests follow the host's locale, and
// are undefined for the negative values of high bytes.
#pragma once

namespace plugincs {

constexpr bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

/// A character of what `FirstWord` returns.
constexpr bool IsWordCharacter(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '#';
}

/// Blank, line feed, carriage return, tab, form feed, vertical tab: the trim set of `trim`.
constexpr bool IsAsciiSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Blank, line feed, carriage return, tab: the reduce set of `ConvertWhiteSpacesToSingleSpace`.
constexpr bool IsReducible(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

}  // namespace plugincs
