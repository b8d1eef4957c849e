// The owner of everything that one parse makes.
#pragma once

#include <memory_resource>
#include <string>
#include <vector>

#include "process/HugePages.h"
#include "tree/ObjectBranch.h"

/// Source text, define list and tree of one file. Nodes hold views into `path` and `text`, and
/// every node points at its parent: so a file stays where it was made, and all goes together.
struct SourceFile {
    /// Makes the root, which takes the next id.
    SourceFile(std::string filePath, std::string sourceText);
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    const std::string path;
    std::string text;                  // the source, later cleaned; fixed once it has been scanned
    std::vector<std::string> defines;  // the operands of its conditional directives
    HugePageMemory pages;
    std::pmr::monotonic_buffer_resource
        memory;  // of the nodes, and of texts that are not in `text`
    ObjectBranch root;
};
