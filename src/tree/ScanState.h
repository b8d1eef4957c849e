// The state of one scan over a cleaned text, and the one way in which its steps make nodes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tree/Chunk.h"
#include "tree/NodePlaces.h"
#include "tree/ObjectBranch.h"

struct ScanState {
    /// Makes the "namespace global" node below the root and starts in it. The text must outlive
    /// the use of the nodes, whose contents stay where they stand in it. `nodePlaces`, unless it is
    /// null, receives where each node stands.
    ScanState(std::span<char> sourceText, bool inDeclarationMode, ObjectBranch& fileRoot,
              NodePlaces* nodePlaces = nullptr);

    std::span<char> text;          // the cleaned text, from the position on
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
    NodePlaces* places;            // asked for, or null
};

/// Makes a node at the end of the parent's children that takes over the collected text, trimmed and
/// reduced, and leaves none. The node ends at the position `end`, or is still open with kNone.
ObjectBranch* AddNode(ScanState& scan, ObjectBranch& parent, const NodeKind& kind,
                      std::int32_t lineNumber, std::size_t end);

/// Makes the parent of the current node, which ends at the position `end`, the current one.
void LeaveNode(ScanState& scan, std::size_t end);

/// The position of the last byte of collected text that is not white space, for `AddNode` and
/// `LeaveNode`.
std::size_t LastCollected(const ScanState& scan);
