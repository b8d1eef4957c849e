// What a block is to the statement whose text stands before its brace.
#pragma once

#include <cstdint>
#include <string_view>

#include "rows/Declaration.h"

namespace plugincs {

enum class BlockKind : std::uint8_t {
    Body,    ///< Of a declaration, an if and so on: the statement ends with the block.
    Lambda,  ///< Statements within an expression, which goes on after it.
    Value,   ///< A part of an expression: an initialiser, a pattern, the arms of a switch.
};

struct Header {
    BlockKind kind;
    std::int64_t open;  ///< Parentheses and brackets that the text leaves open.
    bool wantsBody;     ///< Once they are closed, a block ends the statement.
};

/// Reads the text before a block's brace. `open` is what texts of the same statement before it left
/// open. Linear in the text.
Header ReadHeader(std::string_view text, std::int64_t open, const Declaration& declaration,
                  Around around);

}  // namespace plugincs
