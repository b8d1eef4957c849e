// What a row is to somebody who looks at a map.
#pragma once

#include <cstdint>

#include "rows/FileRows.h"

namespace plugincs {

/// The page has the same list, in the same order.
enum class MapRole : std::uint8_t {
    Type,      ///< What declares a class or the like, or a namespace.
    Function,  ///< What declares one, and so on.
    Variable,  ///< A field or property.
    Branch,
    Loop,
    Call,  ///< Any other statement or block that calls something.
    Statement,
    Block,
    Define,   ///< A using line or directive.
    Symbols,  ///< The operands of the file's conditional directives.
    Error,
};

MapRole RoleOf(const Row& row);

}  // namespace plugincs
