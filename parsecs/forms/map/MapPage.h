// The page that shows the map: one HTML file that needs nothing beside it.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace plugincs {

/// Writes the page around the data, whose bytes are the pieces one after the other. `write` gets
/// the page in parts, each valid for the call. Throws std::bad_alloc, and what `write` throws.
void WriteMapPage(const std::vector<std::string_view>& data,
                  const std::function<void(std::string_view)>& write);

}  // namespace plugincs
