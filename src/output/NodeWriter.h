// The last stage of a parse: writes the finished tree as a JSON text and frees it.
#pragma once

#include <string_view>

#include "tree/ObjectBranch.h"

namespace plugincs {

/// Renders one record for each node at and below `root`, in pre-order, and delivers the text: to
/// the file `outputPath`, or with an empty path to the result of the root's parse. Then detaches
/// everything below the root. Throws std::bad_alloc, with nothing delivered.
void StartGeneratingObjects(ObjectBranch* root, std::string_view outputPath);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::StartGeneratingObjects;
