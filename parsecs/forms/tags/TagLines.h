// The lines of a tags file: one for each declaration.
//
//   NAME <tab> PATH <tab> ADDRESS;" <tab> FIELD:VALUE...
//
// Fields in this order, each only where there is something to say: kind, line, the scope by the
// kind of the declaration that it ends with, file, access, signature, end.
#pragma once

#include <string>
#include <string_view>

#include "rows/FileRows.h"

namespace plugincs {

/// Lines before all others, sorted as they are. They tell readers what they need to know of them.
extern const std::string_view kTagsHead;

/// What a file begins with that these lines are the first of.
inline constexpr std::string_view kTagsMark = "!_TAG_";

/// Appends the file's lines, unsorted. `path` is where an editor finds it.
void AppendTags(const FileRows& file, std::string_view path, std::string& out);

}  // namespace plugincs
