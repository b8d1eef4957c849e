// The state of one scan over a cleaned text, and the verbs that its steps share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tree/Chunk.h"
#include "tree/ObjectBranch.h"

struct Scanner {
    /// Makes the "namespace global" node below the root and starts in it. The text must outlive
    /// the use of the nodes' contents, which stay where they stand in it.
    Scanner(std::string& sourceText, bool inDeclarationMode, ObjectBranch& fileRoot);

    std::string& text;             // the cleaned text, from the position on
    bool declarationMode;          // declaration blocks and structs on, attribute dropping off
    ObjectBranch* root;            // the file's root
    ObjectBranch* current;         // receives new children; '{' moves it down, '}' up
    std::size_t position = 0;      // of the character being examined
    std::int32_t lineCounter = 1;  // counted newlines plus one; newlines in literals do not count
    std::int64_t parenDepth = 0;   // '(' minus ')' outside literals; may go negative
    bool inDirective = false;      // a directive line is being collected
    bool inAttribute = false;      // in a bracketed attribute section that is being dropped
    bool inStruct = false;         // in a struct body; its blocks become defines
    Chunk collected;               // the text since the last node
};

/// What the scan does after a step, and how it ended.
enum class ScanStep {
    Continue,
    Stop,     // at a structural error; it left an error node below the root
    Abandon,  // the build is given up
};

/// Scans the text to its end or to the first step that does not continue, whose result it returns;
/// Stop and Abandon come with a message on standard output. Leaves in `chunk` what made no node.
ScanStep ScanText(Scanner& scanner);

/// Makes a node at the end of the parent's children that takes over the collected text, trimmed and
/// reduced, and leaves none.
ObjectBranch* AddNode(Scanner& scanner, ObjectBranch& parent, BranchType type,
                      std::string_view kindName, std::int32_t lineNumber);
