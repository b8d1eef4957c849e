#include "tree/InlineFunctions.h"

#include "analysis/Classifiers.h"

namespace {

void Refine(ObjectBranch& node) {
    if (DetectReturnDeclaration(node.contents)) {
        node.branchType = BranchType::Line;
        node.branchTypeAsString = KindName::kLine;
        return;
    }
    if (!DetectVariableDeclaration(node.contents)) return;
    // The words "namespace global" would pass for a declaration.
    if (node.branchTypeAsString == KindName::kNamespace) return;
    node.branchType = BranchType::ClassVar;
    node.branchTypeAsString = KindName::kClassVar;
}

}  // namespace

void GenerateInlineFunctions(ObjectBranch* node) {
    for (ObjectBranch* at = FirstInPostOrder(node); at != nullptr; at = NextInPostOrder(at, node)) {
        if (at == node || !at->children.empty()) Refine(*at);
    }
}
