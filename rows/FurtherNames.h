#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace plugincs {

/// A name in a list of variables, and its text with the initial value: "b = 1".
struct FurtherName {
    std::string_view name;
    std::string_view text;
};

/// The names after the first in "int a, b = 1, c". `rest` is what follows the first name, or a
/// block in its initial value, which has left `open` parentheses and brackets open. Linear in the
/// text.
std::vector<FurtherName> FindFurtherNames(std::string_view rest, std::int64_t open);

}  // namespace plugincs
