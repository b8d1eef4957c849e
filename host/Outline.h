// The records as an indented tree for reading.
#pragma once

#include <string>
#include <string_view>

struct OutlineStyle {
    std::size_t width;  // columns of a line, 0 for lines as long as they are
    bool colour;
};

/// One line a record: line number, kind, and the function's name or the text; the first record
/// shows the file's path. `strict` is strict JSON, or an exception is thrown.
std::string Outline(std::string_view strict, const OutlineStyle& style);

/// The text on one line of at most `room` columns, white space and control bytes as single blanks.
std::string Fitted(std::string_view text, std::size_t room);
