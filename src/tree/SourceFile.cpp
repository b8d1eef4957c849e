#include "tree/SourceFile.h"

#include <utility>

namespace {

// Real code has a node for some 90 bytes of text, and comments that the cleaner drops.
std::size_t FirstBlock(std::size_t textSize) { return textSize + 8 * sizeof(ObjectBranch); }

}  // namespace

SourceFile::SourceFile(std::string filePath, std::string sourceText)
    : path(std::move(filePath)),
      text(std::move(sourceText)),
      memory(FirstBlock(text.size()), &pages) {
    root.memory = &memory;
    AssignIdentity(root);
}
