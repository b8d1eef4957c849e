// The frame, the style and the script of the page, which the build puts together from map/page.
#pragma once

#include <string_view>

namespace plugincs {

/// What stands before the data, and what stands after it.
extern const std::string_view kMapHead;
extern const std::string_view kMapTail;

}  // namespace plugincs
