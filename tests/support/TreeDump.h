// A tree as compact text, for tables of {source, tree}.
#pragma once

#include <string>

#include "tree/ObjectBranch.h"

/// The siblings from `node` on, each as `kind@line[contents]` and its children in braces.
inline std::string Dump(const ObjectBranch* node) {
    std::string out;
    for (; node != nullptr; node = node->nextSibling) {
        out.append(out.empty() ? "" : " ").append(node->branchTypeAsString);
        out.append("@").append(std::to_string(node->lineNumber));
        out.append("[").append(node->contents).append("]");
        if (!node->children.empty()) {
            out.append("{").append(Dump(node->children.first)).append("}");
        }
    }
    return out;
}
