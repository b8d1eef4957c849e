// A parse: all that it has and makes. A process may hold any number of them, in any threads.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <vector>

#include "process/HugePages.h"
#include "process/Traces.h"
#include "text/CText.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

/// Source, define list, tree and result of one file (RAII). Nodes hold views into `path` and `text`
/// and point at their parents and at the parse, so it can be neither copied nor moved; all is freed
/// with it. One thread at a time.
struct Parse {
    /// Makes the root, which takes the id 0.
    Parse(std::string filePath, std::string sourceText, Traces messages);
    Parse(const Parse&) = delete;
    Parse& operator=(const Parse&) = delete;

    /// How the scan ended.
    enum class End : unsigned char {
        Whole,
        StoppedEarly,  // at a structural error, which has added an error node to the root
        Abandoned,     // at a closing directive without its beginning: there is no tree
    };

    const std::string path;
    std::string text;                     // the source, later cleaned; fixed once scanned
    std::vector<std::string> defines;     // the operands of its conditional directives
    Traces traces;                        // where its messages go
    std::int32_t nextId = 0;              // of the node that is made next
    std::int32_t objectCount = 0;         // nodes made, but for the root and "namespace global"
    std::optional<std::string> leftOver;  // text that made no node; nothing before the scan
    End end = End::Whole;
    CText result;  // the JSON text, unless it went to a file
    HugePageMemory pages;
    std::pmr::monotonic_buffer_resource
        memory;  // the bump allocator of the nodes, and of texts that are not in `text`
    ObjectBranch root;
};

}  // namespace plugincs
