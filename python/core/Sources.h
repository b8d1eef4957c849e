// Where sources come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "parsecs/form/Form.h"

namespace plugincs {

/// A source of which there is nothing. The message names it and says why.
struct SourceFailure : std::runtime_error {
    SourceFailure(std::string failedPath, std::string why)
        : std::runtime_error(failedPath + ": " + why),
          path(std::move(failedPath)),
          reason(std::move(why)) {}

    std::string path, reason;
};

/// Sources in their order. All members may be called in several threads at once.
class Sources {
  public:
    Sources() = default;
    Sources(const Sources&) = delete;
    Sources& operator=(const Sources&) = delete;
    virtual ~Sources() = default;

    virtual std::size_t size() const = 0;
    virtual const std::string& PathOf(std::size_t index) const = 0;
    virtual std::uint64_t BytesOf(std::size_t index) const = 0;

    /// Throws ReadFailure, std::bad_alloc.
    virtual ReadSource Read(std::size_t index) const = 0;

    /// What was named and cannot be looked at.
    std::vector<InputFailure> failures;
};

/// The files that the paths name, or that lie in the folders named, as the program finds them.
std::unique_ptr<Sources> FindSources(std::vector<std::string> paths);

/// Texts that stand in memory, each with its path.
std::unique_ptr<Sources> SourcesOf(std::vector<std::pair<std::string, std::string>> texts);

}  // namespace plugincs
