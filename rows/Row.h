// A row: what people and tools see of one node of a source.
#pragma once

#include <cstdint>
#include <string_view>

#include "rows/Declaration.h"
#include "rows/Lines.h"

namespace plugincs {

/// One node. Its subtree has the ids from `id` to `last`.
///
/// The first two rows are the file and "namespace global", which holds what stands in it: they have
/// the whole file, or no place where that is empty; but the second ends where a brace too many
/// closes it. The last row lists the operands of conditional directives and has no place.
struct Row {
    std::int32_t id = 0;      ///< From 0, in the order of the source.
    std::int32_t parent = 0;  ///< -1 for the file itself, which comes first.
    std::int32_t last = 0;    ///< Largest id in its subtree.
    std::int32_t depth = 0;   ///< 0 for the file itself.
    Declares declares = Declares::Nothing;
    bool plain = false;           ///< Whether the text certainly stands in JSON as it is.
    std::string_view kind;        ///< The kind of the node's record.
    std::string_view name;        ///< What it declares; empty for nothing.
    std::string_view scope;       ///< The names around it, joined by dots: "N.A".
    std::string_view modifiers;   ///< Of a declaration, as they stand: "public static".
    std::string_view attributes;  ///< The sections before it, as they stand.
    std::string_view text;        ///< Its whole text, in the file's own words.
    Place begin;                  ///< First byte of the text, or of what made the node.
    Place end;                    ///< The ';', the '}' or the last byte that ends it.
};

}  // namespace plugincs
