#include "tree/ScanState.h"

#include "analysis/FirstLook.h"
#include "text/StringHelpers.h"

ScanState::ScanState(std::span<char> sourceText, bool inDeclarationMode, ObjectBranch& fileRoot,
                     NodePlaces* nodePlaces)
    : text(sourceText),
      declarationMode(inDeclarationMode),
      root(&fileRoot),
      current(AddChild(fileRoot)),
      collected(sourceText, nodePlaces == nullptr ? nullptr : &nodePlaces->moves),
      places(nodePlaces) {
    // Not MakeNode: `objectCount` leaves out this node, like the root.
    AssignIdentity(*current);
    SetKind(*current, Kinds::kGlobalNamespace);
    current->filePath = root->filePath;
    current->contents = "namespace global";
}

namespace {

// A node without text is at the character that made it.
std::size_t BeginOf(const ObjectBranch& node, const ScanState& scan) {
    if (node.contents.empty()) return scan.position - 1;
    return scan.places->moves.SourceOf(
        static_cast<std::size_t>(node.contents.data() - scan.text.data()));
}

}  // namespace

ObjectBranch* AddNode(ScanState& scan, ObjectBranch& parent, const NodeKind& kind,
                      std::int32_t lineNumber, std::size_t end) {
    ObjectBranch* const node = MakeNode(parent);
    SetKind(*node, kind);
    node->lineNumber = lineNumber;
    node->filePath = scan.current->filePath;
    node->contents = scan.collected.TakeContents();
    const auto at = static_cast<std::size_t>(node->contents.data() - scan.text.data());
    LookAt(node->contents, scan.text.size() - at, node->look);
    if (scan.places != nullptr) scan.places->Set(node->nodeID, {BeginOf(*node, scan), end});
    scan.collected.Restart(scan.position);
    return node;
}

void LeaveNode(ScanState& scan, std::size_t end) {
    if (scan.places != nullptr) scan.places->SetEnd(scan.current->nodeID, end);
    scan.current = scan.current->parent;
}

std::size_t LastCollected(const ScanState& scan) {
    if (scan.places == nullptr) return NodePlace::kNone;
    const std::string_view text = rtrim(scan.collected.View());
    return scan.places->moves.SourceOf(
        static_cast<std::size_t>(text.data() + text.size() - 1 - scan.text.data()));
}
