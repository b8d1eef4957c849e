#include "parsecs/output/OutputPath.h"

#include <algorithm>
#include <filesystem>

#include "parsecs/options/Options.h"

namespace plugincs {

namespace fs = std::filesystem;

namespace {

bool LeadsOut(const fs::path& path) { return path.empty() || *path.begin() == ".."; }

// By way of what links lead to only where it takes that to stay below.
fs::path FromHere(const fs::path& input) {
    std::error_code error;
    const fs::path here = fs::current_path();
    fs::path path = (here / input).lexically_normal().lexically_relative(here);
    const bool plain = std::find(input.begin(), input.end(), "..") == input.end();
    if (!LeadsOut(path) && plain) return path;
    path = fs::canonical((here / input).parent_path(), error) / input.filename();
    return error ? fs::path() : path.lexically_relative(here);
}

}  // namespace

std::string OutputPath(const std::string& folder, const std::string& input,
                       std::string_view suffix) {
    const fs::path path = FromHere(input);
    if (LeadsOut(path)) {
        throw UsageError("--into: " + input + " lies outside of the folder you are in: cd to one " +
                         "above it, or use -o FILE");
    }
    return (fs::path(folder) / path).string().append(suffix);
}

}  // namespace plugincs
