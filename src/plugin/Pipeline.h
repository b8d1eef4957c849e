// The road of one file through the module: read, clean, scan, refine, write.
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
/// and `currentIndex` back to 0 first. Throws only when memory runs out; whatever happens, nothing
/// of the tree outlives the call.
void ParseFileToFile(std::string inputPath, std::string_view outputPath);

/// The same for a text that was read already; `path` is the name that its records bear.
void ParseText(std::string path, std::string text, std::string_view outputPath);

/// Turns the cleaned text into a tree below `root`, refines it, and delivers it as
/// `StartGeneratingObjects` tells. `root` comes with its identity and its memory, and has no
/// children afterwards, unless the build was abandoned: then nothing was delivered. Nodes point
/// into `sourcePath` and `sourceText`, which is edited where it stands.
void TreeBuilderCS(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines);

// The same road without its end, for those who want the tree and not the text.

/// Where the nodes of a file stand: positions in its cleaned text, and whence that came.
struct SourcePlaces {
    CleaningMaps cleaning;
    NodePlaces nodes;
};

/// Sets `objectCount` and `currentIndex` back to 0: every parse begins with it, before its
/// SourceFile is made.
void StartCounting();

/// Cleans, scans and refines the source that `file.text` holds, and fills in its tree. Stop says
/// that the scan ended early, at braces that do not match; Abandon that there is no tree.
ScanStep BuildTree(SourceFile& file, SourcePlaces& places);
