// Reads and writes whole files as bytes. No errors are reported: a file that cannot be read is an
// empty text, and a file that cannot be opened for writing stays as it is.
#pragma once

#include <string>
#include <string_view>

namespace plugincs {

/// The file's bytes; empty for a path that cannot be read (missing, no permission, a directory),
/// at a read error the bytes before it. Throws std::bad_alloc.
std::string ReadWholeFile(const std::string& path);

/// Replaces whatever the file held by `text`, with no translation of line ends. A write error (a
/// full disk) leaves a beginning of the text in the file.
void writeafile(std::string_view text, const std::string& path);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::writeafile;
