#include "tree/ClassNames.h"

#include "text/StringHelpers.h"

void ExpandClassnames(ObjectBranch* root) {
    for (ObjectBranch* child : root->children) SpelunkForClasses(child);
}

void SpelunkForClasses(ObjectBranch* node) {
    for (ObjectBranch* at = node; at != nullptr;) {
        if (ContainsWord(at->contents, "class")) {
            at->branchType = BranchType::Class;
            at->branchTypeAsString = KindName::kClass;
            at = NextPastSubtree(at, node);
        } else {
            at = NextInPreOrder(at, node);
        }
    }
}
