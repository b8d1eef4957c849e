// Rows as JSON lines: the same shape for one file and for a hundred thousand.
//
// A row a line, its members in this order: file, id, parent, last, depth, kind, declares, name,
// scope, modifiers, attributes, line, column, endLine, endColumn, text. The last four numbers are
// null where the row has no place: in the list of conditional operands, and in all rows of an empty
// file.
#pragma once

#include <string>
#include <string_view>

#include "rows/FileRows.h"

namespace plugincs {

/// The first line of every output, whatever the number of files.
inline constexpr std::string_view kJsonLinesHead = "{\"format\":\"parsecs-rows\",\"version\":2}\n";

/// Appends a line for each row of the file. Always valid JSON in
/// valid UTF-8: each byte of a path that belongs to no sequence becomes U+FFFD.
void AppendJsonLines(const FileRows& file, std::string& out);

}  // namespace plugincs
