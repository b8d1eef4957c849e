#include "tree/Passes.h"

#include <string>

#include "analysis/Classifiers.h"
#include "text/StringHelpers.h"
#include "tree/Parse.h"

namespace plugincs {

namespace {

void Refine(ObjectBranch& node) {
    if (!node.look.asked) node.look.answers = AskParts(node.contents);
    node.look.asked = true;
    if (node.look.answers.returned) {
        SetKind(node, Kinds::kLine);
        return;
    }
    if (!node.look.answers.variable) return;
    // "namespace global" reads like a declaration of `global`.
    if (node.branchTypeAsString == KindName::kNamespace) return;
    SetKind(node, Kinds::kClassVar);
}

}  // namespace

// In any order, as each is judged by its own text.
void GenerateInlineFunctions(ObjectBranch* node) {
    for (ObjectBranch* at = node; at != nullptr; at = NextInPreOrder(at, node)) {
        if (at == node || !at->children.empty()) Refine(*at);
    }
}

void ExpandClassnames(ObjectBranch* root) {
    for (ObjectBranch* child : root->children) SpelunkForClasses(child);
}

void SpelunkForClasses(ObjectBranch* node) {
    for (ObjectBranch* at = node; at != nullptr;) {
        if (at->look.mayHoldClass && ContainsWord(at->contents, "class")) {
            SetKind(*at, Kinds::kClass);
            at = NextPastSubtree(at, node);
        } else {
            at = NextInPreOrder(at, node);
        }
    }
}

void AppendAllDefines(ObjectBranch* root, const std::vector<std::string>& defines) {
    std::pmr::string list(&root->parse->memory);
    for (const std::string& define : defines) list.append(define).push_back('\n');
    ObjectBranch* const node = MakeNode(*root);
    SetKind(*node, Kinds::kDefineList);
    node->filePath = root->filePath;
    node->contents = KeepText(*root, trim(list));
}

}  // namespace plugincs
