// Reading sources. Unlike the module, the program tells when one cannot be read.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "parsecs/input/FoundFile.h"
#include "process/Traces.h"

namespace plugincs {

/// A source as it was read.
struct ReadSource {
    std::string path;           ///< As its rows and records bear it.
    std::string text;           ///< All its bytes.
    std::int64_t modified = 0;  ///< Nanoseconds since the epoch.
    Traces traces{nullptr};     ///< Where the parser's messages go.
};

/// The message says why.
struct ReadFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// All bytes of the file, of standard input for "-". Throws ReadFailure, std::bad_alloc.
std::string ReadBytes(const std::string& path);

/// What was found is what is read: not another thing that has its name by now, and no more bytes
/// than the file has when it is opened. Throws as ReadBytes.
ReadSource ReadFound(const FoundFile& file);

}  // namespace plugincs
