// The driver: the whole pipeline for one source file.
#pragma once

#include <string>

/// Reads `inputPath`, builds its tree and delivers the JSON text to the file `outputPath`, or with
/// an empty path to `returnResult`. A path that cannot be read is an empty text. Sets `objectCount`
/// and `currentIndex` back to 0 first. Throws only when memory runs out; whatever happens, no node
/// outlives the call.
void ParseFileToFile(const std::string& inputPath, const std::string& outputPath);

/// The same for a text that was read already; `path` is the name that its records bear.
void ParseText(const std::string& path, std::string text, const std::string& outputPath);
