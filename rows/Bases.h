#pragma once

#include <string_view>
#include <vector>

namespace plugincs {

/// What a type derives from, by the text of its header: bare names, without type arguments and what
/// they are qualified with. `class A<T>(int x) : N.B<T>(x), I where T : J` gives B and I. The views
/// are pieces of the header.
std::vector<std::string_view> BasesOf(std::string_view header);

}  // namespace plugincs
