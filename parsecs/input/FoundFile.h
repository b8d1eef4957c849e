// The sources of a run, as they are known before they are read.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace plugincs {

/// A source as it was found, before it is read.
struct FoundFile {
    enum class Kind : std::uint8_t {
        File,
        Stream,         ///< A pipe, a terminal, the null device.
        StandardInput,  ///< Whatever that is.
    };
    std::string path;  ///< As rows and records bear it.
    Kind kind = Kind::File;
    std::uint64_t bytes = 0;
    std::int64_t modified = 0;  ///< Nanoseconds since the epoch.
    /// Device and number, by which the system knows it.
    std::pair<std::uint64_t, std::uint64_t> identity{};
};

/// An input of which there will be nothing.
struct InputFailure {
    std::string path;
    std::string reason;
};

}  // namespace plugincs
