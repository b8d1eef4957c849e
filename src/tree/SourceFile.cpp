#include "tree/SourceFile.h"

#include <utility>

namespace {

// The bump allocator's first block, in bytes. Real code has a node for each 90 bytes or so, and
// comments: one or two blocks usually do.
std::size_t FirstBlock(std::size_t textSize) { return textSize + 8 * sizeof(ObjectBranch); }

}  // namespace

SourceFile::SourceFile(std::string filePath, std::string sourceText)
    : path(std::move(filePath)),
      text(std::move(sourceText)),
      memory(FirstBlock(text.size()), &pages) {
    root.memory = &memory;
    AssignIdentity(root);
}
