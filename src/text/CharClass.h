// ASCII character classes on single bytes. The C library's own tests follow the locale that the
// host may have set, and are undefined for the negative values of high bytes; these are neither.
#pragma once

constexpr bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

/// What `FirstWord` takes for a part of a word.
constexpr bool IsWordCharacter(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '#';
}

/// Blank, line feed, carriage return, tab, form feed, vertical tab: the trim set of `trim`.
constexpr bool IsAsciiSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
