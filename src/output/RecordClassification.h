// Decides what a node's record shows.
#pragma once

#include <string>
#include <string_view>

#include "tree/ObjectBranch.h"

namespace plugincs {

/// What the output shows of a node.
struct Record {
    const ObjectBranch& node;
    std::string_view kind;           ///< Final kind name.
    std::string_view contents;       ///< The node's text, or of a class the bare name.
    std::string_view tags;           ///< Raw fragment of JSON array elements.
    std::string simpleFunctionName;  ///< Bare name of a declared function.
};

/// The node's record: its final kind name, and with it the simple name of a function, the tag of a
/// variable declaration, or the bare name of a class as its contents. The tree does not change: a
/// parent's kind is the one that the scan and the passes gave it, not its own record's. A root
/// keeps its kind. The record refers to the node, and its views are valid as long as the node's.
/// Throws std::bad_alloc.
Record ClassifyRecord(const ObjectBranch& node);

}  // namespace plugincs
