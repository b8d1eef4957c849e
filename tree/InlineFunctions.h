#pragma once

#include "tree/ObjectBranch.h"

/// Gives `node`, and every node below it that has children, a second look: a block whose header is
/// a return statement becomes a line, one whose header is a variable declaration a class variable.
void GenerateInlineFunctions(ObjectBranch* node);
