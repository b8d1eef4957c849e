// Links from the map to places in the sources.
#pragma once

#include <string>

namespace plugincs {

/// Throws UsageError for a template that makes no addresses, or such that run code in the page.
void CheckLink(const std::string& link);

}  // namespace plugincs
