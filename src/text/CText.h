// A text as C hosts take it over.
#pragma once

#include <cstdlib>
#include <memory>

namespace plugincs {

struct FreeBlock {
    void operator()(char* block) const { std::free(block); }
};

/// NUL-terminated, in a block from malloc.
using CText = std::unique_ptr<char, FreeBlock>;

}  // namespace plugincs
