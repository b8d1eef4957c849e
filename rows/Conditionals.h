// Which branches of the conditional groups (#if ... #elif ... #else ... #endif) are kept.
//
// No condition is evaluated. A group whose branches each balance in braces and parentheses is kept
// whole. Of any other group one branch is: the one with which the file balances, or else the first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "rows/Span.h"

namespace plugincs {

/// How many braces and parentheses are open, and how few at the lowest.
struct Balance {
    std::int64_t braces = 0;
    std::int64_t parentheses = 0;
    std::int64_t lowestBraces = 0;
    std::int64_t lowestParentheses = 0;

    void AddBraces(std::int64_t count);
    void AddParentheses(std::int64_t count);
    /// Those of a stretch that follows.
    void Add(const Balance& other);

    bool IsNothing() const { return braces == 0 && parentheses == 0; }
    /// Opens all that it closes, and closes all that it opens.
    bool IsWhole() const { return IsNothing() && lowestBraces == 0 && lowestParentheses == 0; }
};

class Conditionals {
  public:
    // The directive lines in their order, each from `begin` up to `end`. Those that continue or
    // close a group that is not open are passed over.
    void Open(Span line);
    void Continue(Span line, bool isElse);
    void Close(Span line);

    /// Whether the source stands in a group: then its braces and parentheses are to be told.
    bool IsInside() const { return !open_.empty(); }
    void AddBraces(std::int64_t count) { InnermostBalance().AddBraces(count); }
    void AddParentheses(std::int64_t count) { InnermostBalance().AddParentheses(count); }

    /// At the end of the source: decides. Afterwards the rest can be asked.
    void Resolve(std::size_t size);

    /// The branches that are left out, in order; none lies in another.
    const std::vector<Span>& dropped() const { return dropped_; }
    /// The beginnings of the groups of which a branch is left out.
    const std::vector<std::size_t>& cut() const { return cut_; }

  private:
    struct Branch {
        Span body;
        Balance balance;
    };
    struct Group {
        std::size_t begin;
        std::size_t parent;        // the group around it, or none
        std::size_t parentBranch;  // in which branch of that
        std::size_t kept = 0;      // of the branches, where not all are
        bool whole = true;         // every branch is
        bool hasElse = false;
        bool reached = true;  // lies in no branch that is left out
        std::vector<Branch> branches{};
    };
    static constexpr std::size_t kNone = ~std::size_t{0};

    Balance& InnermostBalance();
    void EndBranch(Group& group, std::size_t end);
    bool Reaches(const Group& group) const;
    void TryToBalance();
    void ListDropped();

    Balance file_;               // outside of all groups, and of what is kept of those
    std::vector<Group> groups_;  // in the order of their beginnings
    std::vector<std::size_t> open_;
    std::vector<Span> dropped_;
    std::vector<std::size_t> cut_;
};

}  // namespace plugincs
