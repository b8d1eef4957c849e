// The pipeline of one file: clean, scan, refine, write. What looks like a mistake in its records is
// shown stage by stage in docs/records.md, and stays, as hosts rely on the bytes.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tree/NodePlaces.h"
#include "tree/Parse.h"

namespace plugincs {

/// Takes the parse's source through the whole pipeline, and delivers the JSON text to the file
/// `outputPath`, or with an empty path to the parse's result. An abandoned build delivers nothing.
/// Throws std::bad_alloc: then the parse shows how far it came.
void ParseSource(Parse& parse, std::string_view outputPath);

/// Builds the tree of a cleaned text below `root`, refines it, and delivers it as
/// `StartGeneratingObjects` does. `root` is that of a parse. Afterwards it has no children, unless
/// the build was abandoned: then nothing was delivered. Nodes hold views into `sourcePath` and
/// `sourceText`, which is edited in place. Throws std::bad_alloc.
void TreeBuilderCS(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines);

/// The middle of the pipeline, for callers that want the tree, and nothing lost on the way: scans
/// and refines the parse's text, which was made fit for it (see ScanState), and records where the
/// nodes stand in it. Throws std::bad_alloc.
void BuildTree(Parse& parse, NodePlaces& places);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::TreeBuilderCS;
