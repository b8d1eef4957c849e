// The state of one scan over a cleaned text, and how its steps add nodes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tree/Chunk.h"
#include "tree/NodePlaces.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

struct ScanState {
    /// Adds the "namespace global" node below the root and makes it the current one. The text is
    /// edited in place and must outlive the nodes, whose contents are views into it. Throws
    /// std::bad_alloc.
    ///
    /// With `nodePlaces` the scan loses nothing: that receives where each node stands, parentheses
    /// are counted anew in each block, so that statements end in one within parentheses too, and
    /// what is left at the end of a block, or of the text, becomes a statement. The text must be
    /// one of which no byte is dropped: without directives and line feeds, in declaration mode.
    ScanState(std::span<char> sourceText, bool inDeclarationMode, ObjectBranch& fileRoot,
              NodePlaces* nodePlaces = nullptr);

    std::span<char> text;          // cleaned; the bytes before the position may have been edited
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
    NodePlaces* places;            // null unless nothing shall be lost
    std::vector<std::int64_t> outerDepths{};  // then, the parentheses open around each block
};

/// Appends a node to the parent's children. Its contents are the collected text, trimmed and
/// reduced; the chunk is empty afterwards. The node ends at the position `end`, or with kNone is
/// still open or where its text ends. Throws std::bad_alloc.
ObjectBranch* AddNode(ScanState& scan, ObjectBranch& parent, const NodeKind& kind,
                      std::int32_t lineNumber, std::size_t end);

/// Ends the current node at the position `end`, and makes its parent the current one. The node must
/// have a parent.
void LeaveNode(ScanState& scan, std::size_t end);

}  // namespace plugincs
