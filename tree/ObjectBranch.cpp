#include "tree/ObjectBranch.h"

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace {

static_assert(std::is_trivially_destructible_v<ObjectBranch>,
              "blocks go without a destructor call");

// Where the nodes live: blocks of raw memory that go back all at once, with the last node. A node
// costs a step forward, and a parse leaves nothing behind.
class BranchPool {
  public:
    ObjectBranch* Take() {
        if (free_ == 0) AddBlock();
        --free_;
        ++live_;
        return new (next_++) ObjectBranch();
    }

    void GiveBack(std::size_t nodes) {
        live_ -= nodes;
        if (live_ > 0) return;
        blocks_.clear();
        free_ = 0;
    }

  private:
    static constexpr std::size_t kNodesPerBlock = 480;  // just below 64 KiB

    struct Storage {
        alignas(ObjectBranch) std::byte bytes[sizeof(ObjectBranch)];
    };

    void AddBlock() {
        // Not value-initialised: pages that no node needs are never touched.
        blocks_.push_back(std::unique_ptr<Storage[]>(new Storage[kNodesPerBlock]));
        next_ = blocks_.back().get();
        free_ = kNodesPerBlock;
    }

    std::vector<std::unique_ptr<Storage[]>> blocks_;
    Storage* next_ = nullptr;
    std::size_t free_ = 0;
    std::size_t live_ = 0;
};

BranchPool pool;

}  // namespace

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

ObjectBranch* NewBranch() { return pool.Take(); }

void AppendChild(ObjectBranch& parent, ObjectBranch& child) {
    child.parent = &parent;
    (parent.children.empty() ? parent.children.first : parent.children.last->nextSibling) = &child;
    parent.children.last = &child;
}

void FreeChildren(ObjectBranch* node) {
    std::size_t nodes = 0;
    for (const ObjectBranch* at = NextInPreOrder(node, node); at != nullptr;
         at = NextInPreOrder(at, node)) {
        ++nodes;
    }
    node->children = ChildList{};
    pool.GiveBack(nodes);
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
