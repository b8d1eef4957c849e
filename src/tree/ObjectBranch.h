// The one node type of the source tree, its kinds, and the operations on whole trees.
//
// `branchTypeAsString` of a node and `AddObjectToVector` are part of a fixed interface, and no
// product code calls them.
//
// Lifetime: a node's texts are views of string literals or of bytes that its Parse owns, and the
// nodes below a root live in that parse's bump allocator. One thread at a time.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/FirstLook.h"

namespace plugincs {

/// Kind of a node as a number; 13 is not in use. Other values are allowed and read as "function".
enum class BranchType : std::int32_t {
    Filepath = 0,
    Include = 1,
    Container = 2,
    Line = 3,
    Define = 4,
    Logic = 5,
    Function = 6,
    Class = 7,
    Namespace = 8,
    Symbol = 9,
    Loop = 10,
    FileRoot = 11,
    ClassVar = 12,
    Preprocessor = 14,
    Error = 15,
};

/// The kind names that nodes carry and the output shows, and their numbers in databases.
namespace KindName {
enum Number : std::uint8_t {
    Filepath,
    Include,
    Container,
    Line,
    Define,
    Logic,
    Function,
    Class,
    Namespace,
    Symbol,
    Loop,
    ClassVar,
    Preprocessor,
    NullParentError,
    Count
};
inline constexpr std::array<std::string_view, Count> kAll{
    "filepath",     "include",
    "container",    "line",
    "define",       "logic",
    "function",     "class",
    "namespace",    "symbol",
    "loop",         "classvar",
    "preprocessor", "error: NULL parent branch",
};
static_assert(!kAll.back().empty(), "each number has a name");

inline constexpr std::string_view kFilepath = kAll[Filepath];
inline constexpr std::string_view kInclude = kAll[Include];
inline constexpr std::string_view kContainer = kAll[Container];
inline constexpr std::string_view kLine = kAll[Line];
inline constexpr std::string_view kDefine = kAll[Define];
inline constexpr std::string_view kLogic = kAll[Logic];
inline constexpr std::string_view kFunction = kAll[Function];
inline constexpr std::string_view kClass = kAll[Class];
inline constexpr std::string_view kNamespace = kAll[Namespace];
inline constexpr std::string_view kSymbol = kAll[Symbol];
inline constexpr std::string_view kLoop = kAll[Loop];
inline constexpr std::string_view kClassVar = kAll[ClassVar];
inline constexpr std::string_view kPreprocessor = kAll[Preprocessor];
inline constexpr std::string_view kNullParentError = kAll[NullParentError];
}  // namespace KindName

struct ObjectBranch;
struct Parse;

/// A node's children in the order they were appended: an intrusive singly linked list, so that
/// appending and stepping take constant time. A copy of the list refers to the same children.
struct ChildList {
    class Iterator {
      public:
        explicit Iterator(ObjectBranch* node) : node_(node) {}
        ObjectBranch* operator*() const { return node_; }
        Iterator& operator++();
        bool operator!=(const Iterator& other) const { return node_ != other.node_; }

      private:
        ObjectBranch* node_;
    };

    bool empty() const { return first == nullptr; }
    Iterator begin() const { return Iterator(first); }
    Iterator end() const { return Iterator(nullptr); }

    ObjectBranch* first = nullptr;
    ObjectBranch* last = nullptr;
};

/// Plain data. A copy is shallow: it refers to the same children. No node owns anything.
struct ObjectBranch {
    ObjectBranch* parent = nullptr;  ///< The node whose `children` hold this one; null for a root.
    BranchType branchType = BranchType::Filepath;
    std::int32_t lineNumber = 0;          ///< Source line of the statement or block header, or 0.
    std::string_view filePath;            ///< Path of the source file.
    std::string_view contents;            ///< Statement, block header, file name or define list.
    std::string_view branchTypeAsString;  ///< Kind name; its record may show another.
    std::string_view simpleFunctionName;  ///< Left empty by the scan: ClassifyRecord finds it.
    std::int32_t functionID = 0;          ///< -1 once `AssignIdentity` was called.
    ChildList children;
    std::string_view tags;                ///< Raw fragment of JSON array elements.
    std::int32_t nodeID = 0;              ///< Unique within one parse.
    FirstLook look;                       ///< What is known of the contents.
    ObjectBranch* nextSibling = nullptr;  ///< The next of the parent's `children`.
    Parse* parse = nullptr;               ///< Counts and owns the nodes and texts below it.
};

inline ChildList::Iterator& ChildList::Iterator::operator++() {
    node_ = node_->nextSibling;
    return *this;
}

/// A node's kind as a number and as a name. The pairs are not always those of `branchTypeAsString`:
/// the global namespace has the number of a new node, and errors have a message as their name.
struct NodeKind {
    BranchType type;
    std::string_view name;
};

/// The kinds that the scan and the passes set. Records may change the name: see ClassifyRecord.
namespace Kinds {
inline constexpr NodeKind kFile{BranchType::FileRoot, KindName::kFilepath};
inline constexpr NodeKind kGlobalNamespace{BranchType::Filepath, KindName::kNamespace};
inline constexpr NodeKind kLine{BranchType::Line, KindName::kLine};
inline constexpr NodeKind kDefine{BranchType::Define, KindName::kDefine};
inline constexpr NodeKind kContainer{BranchType::Container, KindName::kContainer};
inline constexpr NodeKind kClassVar{BranchType::ClassVar, KindName::kClassVar};
inline constexpr NodeKind kClass{BranchType::Class, KindName::kClass};
inline constexpr NodeKind kDefineList{BranchType::Preprocessor, KindName::kPreprocessor};
inline constexpr NodeKind kNullParentError{BranchType::Error, KindName::kNullParentError};
}  // namespace Kinds

inline void SetKind(ObjectBranch& node, const NodeKind& kind) {
    node.branchType = kind.type;
    node.branchTypeAsString = kind.name;
}

/// The default kind name of the node's `branchType`, a string literal: "function" for every value
/// without a name of its own.
std::string_view branchTypeAsString(const ObjectBranch& node);

/// Appends a value-initialised node to `parent.children`, in the memory of its parse. Throws
/// std::bad_alloc.
ObjectBranch* AddChild(ObjectBranch& parent);

/// Copies the text into the memory of the node's parse: the copy lives as long as that. Throws
/// std::bad_alloc.
std::string_view KeepText(const ObjectBranch& node, std::string_view text);

/// Gives a new node the next id of its parse, and the `functionID` -1.
void AssignIdentity(ObjectBranch& node);

/// The usual way to add a node: `AddChild`, `AssignIdentity`, and one more in `objectCount`. Throws
/// std::bad_alloc.
ObjectBranch* MakeNode(ObjectBranch& parent);

/// Detaches all descendants of `node`. Their memory is not freed here: the bump allocator frees all
/// of it at once, with the Parse.
void FreeChildren(ObjectBranch* node);

/// Appends a copy of `node` and of every node below it to `list`, in pre-order. A copy refers to
/// the same children, and can be passed as the top of a walk like the node itself.
void AddObjectToVector(const ObjectBranch* node, std::vector<ObjectBranch>* list);

// Steps of a walk over `top`, or a copy of it, and the tree below. Iterative: a file may nest a
// million blocks.

/// The node after `node` in pre-order, or null after the last one below `top`.
ObjectBranch* NextInPreOrder(const ObjectBranch* node, const ObjectBranch* top);

/// The same, skipping everything below `node`.
ObjectBranch* NextPastSubtree(const ObjectBranch* node, const ObjectBranch* top);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::AddObjectToVector;
using plugincs::BranchType;
using plugincs::branchTypeAsString;
using plugincs::FreeChildren;
using plugincs::ObjectBranch;
