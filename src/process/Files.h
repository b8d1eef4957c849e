// Whole files in, whole files out, as bytes. Nothing is reported: a file that cannot be read is an
// empty text, and a file that cannot be opened for writing receives nothing.
#pragma once

#include <string>
#include <string_view>

/// The file's bytes; empty for a path that cannot be read (missing, no permission, a directory).
std::string ReadWholeFile(const std::string& path);

/// Replaces whatever the file held by `text`; nothing is translated or added.
void writeafile(std::string_view text, const std::string& path);
