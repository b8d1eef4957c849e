// The module's exported state, from load to unload: process-wide and without a lock, so a host
// makes one call at a time. The C boundary alone reads and writes it; parses know nothing of it.
//
// The five objects with default visibility are part of the module's interface: a host finds them by
// name. The two pointers are private; their blocks come from malloc, for hosts to free.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace plugincs {
struct ObjectBranch;
}

#pragma GCC visibility push(default)
// C linkage: GCC appends [abi:cxx11] to the symbols of std::string variables otherwise.
extern "C" {

/// Nodes made by the last parse, not counting the root and the "namespace global" node. 1 at load.
extern std::int32_t objectCount;

/// The id that the next node receives. 0 at load.
extern std::int32_t currentIndex;

/// After a parse, the text that was left over and made no node.
extern std::string chunk;

/// A sample path of a source file. Nothing reads or changes it.
extern std::string startPath;

/// Nothing fills or reads it.
extern std::vector<plugincs::ObjectBranch*> AllBranches;
}
#pragma GCC visibility pop

/// The text of the last parse that kept its result in memory, or null. Released by `CleanupCS`.
extern char* returnResult;

/// The last text made by `Info`, or null. Never released.
extern char* resPtr;
