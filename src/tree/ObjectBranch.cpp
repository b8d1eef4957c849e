#include "tree/ObjectBranch.h"

#include <new>
#include <type_traits>

#include "tree/Parse.h"

namespace plugincs {

static_assert(std::is_trivially_destructible_v<ObjectBranch>,
              "nodes go with their memory, without a destructor call");

std::string_view branchTypeAsString(const ObjectBranch& node) {
    switch (node.branchType) {
        case BranchType::Filepath:
        case BranchType::FileRoot: return KindName::kFilepath;
        case BranchType::Include: return KindName::kInclude;
        case BranchType::Container: return KindName::kContainer;
        case BranchType::Line: return KindName::kLine;
        case BranchType::Define: return KindName::kDefine;
        case BranchType::Logic: return KindName::kLogic;
        case BranchType::Class: return KindName::kClass;
        case BranchType::Namespace: return KindName::kNamespace;
        case BranchType::Symbol: return KindName::kSymbol;
        case BranchType::Loop: return KindName::kLoop;
        case BranchType::ClassVar: return KindName::kClassVar;
        default: return KindName::kFunction;
    }
}

ObjectBranch* AddChild(ObjectBranch& parent) {
    void* const place = parent.parse->memory.allocate(sizeof(ObjectBranch), alignof(ObjectBranch));
    ObjectBranch* const child = new (place) ObjectBranch;
    child->parent = &parent;
    child->parse = parent.parse;
    (parent.children.empty() ? parent.children.first : parent.children.last->nextSibling) = child;
    parent.children.last = child;
    return child;
}

std::string_view KeepText(const ObjectBranch& node, std::string_view text) {
    char* const place = static_cast<char*>(node.parse->memory.allocate(text.size(), 1));
    return {place, text.copy(place, text.size())};
}

void AssignIdentity(ObjectBranch& node) {
    node.nodeID = node.parse->nextId++;
    node.functionID = -1;
}

ObjectBranch* MakeNode(ObjectBranch& parent) {
    ObjectBranch* const node = AddChild(parent);
    AssignIdentity(*node);
    ++parent.parse->objectCount;
    return node;
}

void FreeChildren(ObjectBranch* node) { node->children = ChildList{}; }

void AddObjectToVector(const ObjectBranch* node, std::vector<ObjectBranch>* list) {
    for (const ObjectBranch* at = node; at != nullptr; at = NextInPreOrder(at, node)) {
        list->push_back(*at);
    }
}

ObjectBranch* NextInPreOrder(const ObjectBranch* node, const ObjectBranch* top) {
    // Looked up, not chosen by a branch: which nodes have children cannot be predicted.
    const bool inner = !node->children.empty();
    ObjectBranch* const choices[] = {node->nextSibling, node->children.first};
    ObjectBranch* const next = choices[inner ? 1 : 0];
    return next != nullptr && (inner || node != top) ? next : NextPastSubtree(node, top);
}

// Compares with the top's last child, not with the top: that may be a copy, and the parent of its
// children is the original.
ObjectBranch* NextPastSubtree(const ObjectBranch* node, const ObjectBranch* top) {
    if (node == top) return nullptr;
    while (node->nextSibling == nullptr) {
        if (node == top->children.last) return nullptr;
        node = node->parent;
    }
    return node->nextSibling;
}

}  // namespace plugincs
