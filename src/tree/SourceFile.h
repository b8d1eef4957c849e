// The owner of a parse's text and tree.
#pragma once

#include <memory_resource>
#include <string>
#include <vector>

#include "process/HugePages.h"
#include "tree/ObjectBranch.h"

/// Source text, define list and tree of one file (RAII). Nodes hold views into `path` and `text`
/// and point at their parents, so it can be neither copied nor moved; all is freed with it.
struct SourceFile {
    /// Makes the root, which takes the next id from `currentIndex`. Throws std::bad_alloc.
    SourceFile(std::string filePath, std::string sourceText);
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    const std::string path;
    std::string text;                  // the source, later cleaned; fixed once it has been scanned
    std::vector<std::string> defines;  // the operands of its conditional directives
    HugePageMemory pages;
    std::pmr::monotonic_buffer_resource
        memory;  // the bump allocator of the nodes, and of texts that are not in `text`
    ObjectBranch root;
};
