// How far the text of a declaration is its signature, and what tells it from its siblings.
//
//   function, indexer     up to its block or "=>", with the constraints behind its parameters
//   constructor           up to what it calls first: ": base(...)"
//   field, event, enumerator, property      up to '=', "=>", a block, or the next name
//   type                  up to its block: its bases are its signature
#pragma once

#include <cstddef>
#include <cstdint>

#include "parsecs/diff/TextHash.h"
#include "rows/Row.h"

namespace plugincs {

struct DeclaredHeader {
    std::size_t tokens = 0;     ///< Of the row's text, from the first: the signature.
    std::size_t nameBegin = 0;  ///< Which of them are the name.
    std::size_t nameEnd = 0;
    std::uint64_t nameKey = 0;  ///< Of its kind and name.
    std::uint64_t key = 0;  ///< With the types of its parameters: overloads have different ones.
};

/// Of a row that declares something. Linear in its text.
DeclaredHeader HeaderOf(const Row& row, HashPoint point);

}  // namespace plugincs
