// The passes over the scanned tree, in running order.
#pragma once

#include <string>
#include <vector>

#include "tree/ObjectBranch.h"

namespace plugincs {

/// Despite its name it refines the kinds of blocks, that is, of `node` and of every node below it
/// that has children: a header that is a return statement makes a line, one that is a variable
/// declaration a class variable.
void GenerateInlineFunctions(ObjectBranch* node);

/// `SpelunkForClasses` for each child of the root.
void ExpandClassnames(ObjectBranch* root);

/// Makes a class of every outermost node, at or below `node`, whose text contains "class", inside a
/// longer word too. Nodes below a class are not visited.
void SpelunkForClasses(ObjectBranch* node);

/// Appends to the root the node that holds the file's define list, one entry a line. Throws
/// std::bad_alloc.
void AppendAllDefines(ObjectBranch* root, const std::vector<std::string>& defines);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::AppendAllDefines;
using plugincs::ExpandClassnames;
using plugincs::GenerateInlineFunctions;
using plugincs::SpelunkForClasses;
