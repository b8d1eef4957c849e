// The rows as an indented tree for reading.
#pragma once

#include <cstddef>
#include <string>

#include "rows/FileRows.h"

namespace plugincs {

struct OutlineStyle {
    std::size_t width = 0;  ///< Bytes of a line at most, as far as texts can be cut; 0: all.
    bool colour = false;
};

/// Appends one line a row: the source's line, what it declares or else its kind, and the text; the
/// first row shows the file's path. White space and control bytes are single blanks. Below the
/// twentieth level lines are indented no further.
void AppendOutline(const FileRows& file, OutlineStyle style, std::string& out);

}  // namespace plugincs
