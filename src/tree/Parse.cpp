#include "tree/Parse.h"

#include <utility>

namespace plugincs {

namespace {

// The bump allocator's first block, in bytes. Real code has a node for each 90 bytes or so, and
// comments: one or two blocks usually do.
std::size_t FirstBlock(std::size_t textSize) { return textSize + 8 * sizeof(ObjectBranch); }

}  // namespace

Parse::Parse(std::string filePath, std::string sourceText, Traces messages)
    : path(std::move(filePath)),
      text(std::move(sourceText)),
      traces(messages),
      memory(FirstBlock(text.size()), &pages) {
    root.parse = this;
    AssignIdentity(root);
}

}  // namespace plugincs
