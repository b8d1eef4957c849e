// The records as an indented tree for reading.
#pragma once

#include <string>
#include <string_view>

/// One line a record: line number, kind, and the function's name or the text; the first record
/// shows the file's path. Fits a terminal at the descriptor, which alone gets colours.
/// `strict` is strict JSON, or an exception is thrown.
std::string Outline(std::string_view strict, int descriptor);
