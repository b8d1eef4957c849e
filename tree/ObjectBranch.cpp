#include "tree/ObjectBranch.h"

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

ObjectBranch* NewBranch() {
    return new ObjectBranch();
}

void AppendChild(ObjectBranch& parent, ObjectBranch& child) {
    child.parent = &parent;
    (parent.children.empty() ? parent.children.first : parent.children.last->nextSibling) = &child;
    parent.children.last = &child;
}

void FreeChildren(ObjectBranch* node) {
    ObjectBranch* next = FirstInPostOrder(node);
    while (next != node) {
        ObjectBranch* const freed = next;
        next = NextInPostOrder(freed, node);
        delete freed;
    }
    node->children = ChildList{};
}

void AddObjectToVector(const ObjectBranch* node, std::vector<ObjectBranch>* list) {
    for (const ObjectBranch* at = node; at != nullptr; at = NextInPreOrder(at, node)) {
        list->push_back(*at);
    }
}

ObjectBranch* NextInPreOrder(const ObjectBranch* node, const ObjectBranch* top) {
    return node->children.empty() ? NextPastSubtree(node, top) : node->children.first;
}

ObjectBranch* NextPastSubtree(const ObjectBranch* node, const ObjectBranch* top) {
    while (node != top && node->nextSibling == nullptr) node = node->parent;
    return node == top ? nullptr : node->nextSibling;
}

ObjectBranch* FirstInPostOrder(ObjectBranch* top) {
    while (!top->children.empty()) top = top->children.first;
    return top;
}

ObjectBranch* NextInPostOrder(ObjectBranch* node, const ObjectBranch* top) {
    if (node == top) return nullptr;
    return node->nextSibling == nullptr ? node->parent : FirstInPostOrder(node->nextSibling);
}
