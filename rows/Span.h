#pragma once

#include <cstddef>

namespace plugincs {

/// A stretch of a text: the bytes from `begin` up to `end`.
struct Span {
    std::size_t begin;
    std::size_t end;
};

}  // namespace plugincs
