// The last stage of every parse: the finished tree goes out as a JSON text and is released.
#pragma once

#include <string_view>

#include "tree/ObjectBranch.h"

/// Renders one record for each node at and below `root`, in pre-order, and delivers the text: to
/// the file `outputPath`, or with an empty path to `returnResult` in a new block (the block that
/// it held before is not released). Then frees everything below the root.
void StartGeneratingObjects(ObjectBranch* root, std::string_view outputPath);
