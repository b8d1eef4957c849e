#include "tree/ScanState.h"

#include "analysis/FirstLook.h"
#include "text/StringHelpers.h"

namespace plugincs {

ScanState::ScanState(std::span<char> sourceText, bool inDeclarationMode, ObjectBranch& fileRoot,
                     NodePlaces* nodePlaces)
    : text(sourceText),
      declarationMode(inDeclarationMode),
      root(&fileRoot),
      current(AddChild(fileRoot)),
      collected(sourceText),
      places(nodePlaces) {
    // Not MakeNode: `objectCount` leaves out this node, like the root.
    AssignIdentity(*current);
    SetKind(*current, Kinds::kGlobalNamespace);
    current->filePath = root->filePath;
    current->contents = "namespace global";
}

namespace {

std::size_t PositionOf(const char* byte, const ScanState& scan) {
    return static_cast<std::size_t>(byte - scan.text.data());
}

// Of a node whose text stood before `behind`. Without text it is at the character that made it.
NodePlace PlaceOf(const ObjectBranch& node, std::size_t behind, const ScanState& scan) {
    if (node.contents.empty()) return {scan.position - 1, scan.position - 1};
    return {PositionOf(node.contents.data(), scan), behind};
}

}  // namespace

ObjectBranch* AddNode(ScanState& scan, ObjectBranch& parent, const NodeKind& kind,
                      std::int32_t lineNumber, std::size_t end) {
    ObjectBranch* const node = MakeNode(parent);
    SetKind(*node, kind);
    node->lineNumber = lineNumber;
    node->filePath = scan.current->filePath;
    const std::string_view text = rtrim(scan.collected.View());
    node->contents = scan.collected.TakeContents();
    const std::size_t at = PositionOf(node->contents.data(), scan);
    LookAt(node->contents, scan.text.size() - at, node->look);
    if (scan.places != nullptr) {
        NodePlace place = PlaceOf(*node, PositionOf(text.data() + text.size(), scan), scan);
        place.end = end;
        place.isBlock = kind.type == BranchType::Container;
        scan.places->Set(node->nodeID, place);
    }
    scan.collected.Restart(scan.position);
    return node;
}

void LeaveNode(ScanState& scan, std::size_t end) {
    if (scan.places != nullptr) scan.places->SetEnd(scan.current->nodeID, end);
    scan.current = scan.current->parent;
}

}  // namespace plugincs
