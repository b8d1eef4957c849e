// Finds, for the declarations of one scope in the old state, what they are in the new one.
//
//   1. the same kind, name and types of parameters
//   2. the same kind and name, when there is one of that name alone, or the body is the same
//
// Of several that are alike in this (both branches of an #if may declare a function) those of the
// same text belong together, then those that are left, in their order, if these are as many.
#pragma once

#include <vector>

#include "parsecs/diff/Change.h"
#include "parsecs/diff/DeclaredFile.h"

namespace plugincs {

/// Makes `old` and `now` partners, and what lies in them as far as it is certain. Tells how
/// partners differ. What finds no partner has none. Linear in the declarations.
void Match(Declared& old, Declared& now, std::vector<Change>& changes);

}  // namespace plugincs
