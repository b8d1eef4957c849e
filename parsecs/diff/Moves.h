// What has found no partner in its own scope, looked for in all others.
//
// Nothing is guessed: two declarations belong together when they alone have the same text, or when
// in one scope they alone have the same text but for the name. What moves takes along what is
// nested in it.
#pragma once

#include <memory>
#include <vector>

#include "parsecs/diff/Change.h"
#include "parsecs/diff/DeclaredFile.h"

namespace plugincs {

/// Tells of all declarations without a partner that they were moved, renamed, removed or added.
/// `old` and `now` are the files of the states that have such. Linear in the declarations.
void FindMoves(const std::vector<std::unique_ptr<DeclaredFile>>& old,
               const std::vector<std::unique_ptr<DeclaredFile>>& now, std::vector<Change>& changes);

}  // namespace plugincs
