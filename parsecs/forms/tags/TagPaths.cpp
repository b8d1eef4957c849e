#include "parsecs/forms/tags/TagPaths.h"

#include <algorithm>
#include <system_error>

namespace plugincs {

namespace fs = std::filesystem;

TagPaths::TagPaths(const std::string& tagsFile) : here_(fs::current_path()), folder_(here_) {
    std::error_code error;
    const fs::path folder = fs::canonical(here_ / fs::path(tagsFile).parent_path(), error);
    if (!error) folder_ = folder;
}

// A link and ".." may lead anywhere: only the system knows.
std::string TagPaths::Of(const std::string& path) const {
    const fs::path input(path);
    fs::path whole = here_ / input;
    std::error_code error;
    if (std::find(input.begin(), input.end(), "..") != input.end()) {
        const fs::path folder = fs::canonical(whole.parent_path(), error);
        if (!error) whole = folder / input.filename();
    }
    const fs::path relative = whole.lexically_normal().lexically_relative(folder_);
    const bool leadsOut = relative.empty() || *relative.begin() == "..";
    return input.is_absolute() && leadsOut ? path : relative.generic_string();
}

}  // namespace plugincs
