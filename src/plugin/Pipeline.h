// The pipeline of one file: read, clean, scan, refine, write.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cleaner/Cleaner.h"
#include "tree/NodePlaces.h"
#include "tree/Scanner.h"
#include "tree/SourceFile.h"

/// Reads `inputPath`, builds its tree and delivers the JSON text to the file `outputPath`, or with
/// an empty path to `returnResult`. A path that cannot be read is an empty text. Sets `objectCount`
/// and `currentIndex` back to 0 first. Throws std::bad_alloc only; nothing of the tree outlives the
/// call either way.
void ParseFileToFile(std::string inputPath, std::string_view outputPath);

/// The same for a text in memory; `path` is the file path in its records.
void ParseText(std::string path, std::string text, std::string_view outputPath);

/// Builds the tree of a cleaned text below `root`, refines it, and delivers it as
/// `StartGeneratingObjects` does. `root` needs its identity and its memory. Afterwards it has no
/// children, unless the build was abandoned: then nothing was delivered. Nodes hold views into
/// `sourcePath` and `sourceText`, which is edited in place. Throws std::bad_alloc.
void TreeBuilderCS(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines);

// The same pipeline without the output, for callers that want the tree.

/// Where the nodes of a file stand: positions in its cleaned text, and the way back to the source.
struct SourcePlaces {
    CleaningMaps cleaning;
    NodePlaces nodes;
};

/// Sets `objectCount` and `currentIndex` back to 0: every parse begins with it, before its
/// SourceFile is made.
void StartCounting();

/// Cleans, scans and refines the source in `file.text`, and fills in its tree. Returns Stop if the
/// scan ended early, at braces that do not match, and Abandon if there is no tree. Throws
/// std::bad_alloc.
ScanStep BuildTree(SourceFile& file, SourcePlaces& places);
