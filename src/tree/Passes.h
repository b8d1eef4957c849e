// The passes over the scanned tree, in running order.
#pragma once

#include <string>
#include <vector>

#include "tree/ObjectBranch.h"

/// Refines block kinds: gives `node`, and every node below it that has children, a second look. A
/// header that is a return statement makes it a line, one that is a variable declaration a class
/// variable.
void GenerateInlineFunctions(ObjectBranch* node);

/// Marks the class nodes below the root, child by child.
void ExpandClassnames(ObjectBranch* root);

/// Marks as a class every outermost node, at or below `node`, whose text contains "class" anywhere,
/// inside a longer word too. What lies below a marked node is not looked at.
void SpelunkForClasses(ObjectBranch* node);

/// Appends to the root the node that lists the file's define list, an entry a line.
void AppendAllDefines(ObjectBranch* root, const std::vector<std::string>& defines);
