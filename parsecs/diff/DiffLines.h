// The changes of a diff as lines.
#pragma once

#include <string>
#include <string_view>

#include "parsecs/diff/Change.h"

namespace plugincs {

/// The first line of rows, whatever follows.
inline constexpr std::string_view kDiffRowsHead = "{\"format\":\"parsecs-diff\",\"version\":1}\n";

/// Appends a row: change, declares, scope, name, file, line, endLine, oldFile, oldLine, oldEndLine;
/// null where there is none. Name and scope are those of the new state, or else of the old one.
void AppendDiffRow(const Change& change, std::string& out);

/// Appends a line for people: what happened, to what, and where; then what it was before, as far as
/// that differs. Control characters are question marks.
void AppendDiffLine(const Change& change, bool colour, std::string& out);

}  // namespace plugincs
