#pragma once

#include <string>
#include <string_view>

namespace plugincs {

/// The file below `folder` for that input: the input's path from where the program stands, and the
/// suffix behind it, so that no two files share an output. Throws UsageError for what does not lie
/// below there.
std::string OutputPath(const std::string& folder, const std::string& input,
                       std::string_view suffix);

}  // namespace plugincs
