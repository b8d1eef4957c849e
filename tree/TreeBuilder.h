// Builds the tree of one file, runs the passes over it and has it written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tree/ObjectBranch.h"

/// Turns the cleaned text into a tree below `root`, refines it, and delivers it as
/// `StartGeneratingObjects` tells. `root` comes with its identity, stays the caller's, and has no
/// children afterwards, unless the build was abandoned: then nothing was delivered, and what hangs
/// below the root is the caller's to free, and good for nothing else. `sourcePath` must outlive the
/// use of the root, which points into it.
void TreeBuilderCS(std::string_view sourcePath, std::string sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines);
