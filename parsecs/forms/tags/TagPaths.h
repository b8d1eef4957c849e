#pragma once

#include <filesystem>
#include <string>

namespace plugincs {

/// Where editors look for the files that a tags file names: they begin at its folder.
class TagPaths {
  public:
    /// An empty path stands for standard output, whose reader is where the program is.
    explicit TagPaths(const std::string& tagsFile);

    /// An absolute path stays one, unless it leads below the folder.
    std::string Of(const std::string& path) const;

  private:
    std::filesystem::path here_;
    std::filesystem::path folder_;
};

}  // namespace plugincs
