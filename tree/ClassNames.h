#pragma once

#include "tree/ObjectBranch.h"

/// Marks the class nodes below the root, child by child.
void ExpandClassnames(ObjectBranch* root);

/// Marks as a class every outermost node, at or below `node`, whose text contains "class" anywhere,
/// inside a longer word too. What lies below a marked node is not looked at.
void SpelunkForClasses(ObjectBranch* node);
