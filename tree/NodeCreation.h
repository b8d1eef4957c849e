// The creation convention that every creator of nodes follows.
#pragma once

#include "tree/ObjectBranch.h"

/// Gives a fresh node the next id of `currentIndex`, and the `functionID` that all nodes have.
void AssignIdentity(ObjectBranch& node);

/// A new node with its identity, counted in `objectCount`, at the end of the parent's children.
ObjectBranch* MakeNode(ObjectBranch& parent);
