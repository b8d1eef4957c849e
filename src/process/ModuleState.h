// The state that lives from load to unload and is shared by all stages: process-wide and
// unlocked, so a host makes one call at a time.
//
// The five objects with external visibility are part of the module's interface: a host reaches
// them by name. The two text holders are private; their blocks come from malloc and go with free.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ObjectBranch;

#pragma GCC visibility push(default)
// C linkage: compilers add a tag to the plain names of string variables otherwise.
extern "C" {

/// Nodes made during the last parse, without the root and the "namespace global" node. 1 at load.
extern std::int32_t objectCount;

/// The id that the next node receives. 0 at load.
extern std::int32_t currentIndex;

/// The scanner's text accumulator; after a parse, the text that made no node.
extern std::string chunk;

/// A sample path of a source file. Nothing reads or changes it.
extern std::string startPath;

/// Nothing fills or reads it.
extern std::vector<ObjectBranch*> AllBranches;
}
#pragma GCC visibility pop

/// The text of the last parse that kept its result in memory, or null. Released by `CleanupCS`.
extern char* returnResult;

/// The last text made by `Info`, or null. Never released.
extern char* resPtr;
