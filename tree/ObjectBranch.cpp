#include "tree/ObjectBranch.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

#include "text/LargePages.h"

namespace {

static_assert(std::is_trivially_destructible_v<ObjectBranch>,
              "blocks go without a destructor call");

// Where the nodes live: blocks of raw memory that go back all at once, with the last node. A node
// costs a step forward, and nothing of a tree is left when it is gone.
class BranchPool {
  public:
    ObjectBranch* Take() {
        if (next_ == end_) AddBlock();
        ++live_;
        return new (next_++) ObjectBranch;
    }

    void GiveBack(std::size_t nodes) {
        assert(nodes <= live_);
        live_ -= nodes;
        if (live_ > 0) return;
        blocks_.clear();
        next_ = end_ = nullptr;
    }

  private:
    struct Storage {
        alignas(ObjectBranch) std::byte bytes[sizeof(ObjectBranch)];
    };

    // Each block is twice as large as the one before, within bounds. Blocks are not initialised:
    // pages that no node needs are never touched.
    void AddBlock() {
        constexpr std::size_t kLeast = 128;
        constexpr std::size_t kMost = 65536;
        const std::size_t nodes =
            std::min(kLeast << std::min<std::size_t>(blocks_.size(), 16), kMost);
        blocks_.push_back(std::unique_ptr<Storage[]>(new Storage[nodes]));
        next_ = blocks_.back().get();
        end_ = next_ + nodes;
        AskForLargePages(next_, nodes * sizeof(Storage));
    }

    std::vector<std::unique_ptr<Storage[]>> blocks_;
    Storage* next_ = nullptr;
    Storage* end_ = nullptr;
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

ObjectBranch* AddChild(ObjectBranch& parent) {
    ObjectBranch* const child = pool.Take();
    child->parent = &parent;
    (parent.children.empty() ? parent.children.first : parent.children.last->nextSibling) = child;
    parent.children.last = child;
    return child;
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
