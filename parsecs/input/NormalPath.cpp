#include "parsecs/input/NormalPath.h"

#include <algorithm>
#include <filesystem>

namespace plugincs {

std::string NormalPath(const std::string& path) {
    const auto has = [&path](const char* piece) { return path.find(piece) != std::string::npos; };
    // As most are.
    if (!has("//") && !has("./") && !path.ends_with('/')) return path;
    const std::filesystem::path name(path);
    if (std::find(name.begin(), name.end(), "..") != name.end()) return path;
    std::string normal = name.lexically_normal().string();
    if (normal.size() > 1 && normal.back() == '/') normal.pop_back();
    return normal;
}

}  // namespace plugincs
