#include "rows/Conditionals.h"

#include <algorithm>

namespace plugincs {

void Balance::AddBraces(std::int64_t count) {
    braces += count;
    lowestBraces = std::min(lowestBraces, braces);
}

void Balance::AddParentheses(std::int64_t count) {
    parentheses += count;
    lowestParentheses = std::min(lowestParentheses, parentheses);
}

void Balance::Add(const Balance& other) {
    lowestBraces = std::min(lowestBraces, braces + other.lowestBraces);
    lowestParentheses = std::min(lowestParentheses, parentheses + other.lowestParentheses);
    braces += other.braces;
    parentheses += other.parentheses;
}

void Conditionals::Open(Span line) {
    const std::size_t parent = open_.empty() ? kNone : open_.back();
    const std::size_t branch = open_.empty() ? 0 : groups_[parent].branches.size() - 1;
    open_.push_back(groups_.size());
    groups_.push_back({.begin = line.begin, .parent = parent, .parentBranch = branch});
    groups_.back().branches.push_back({{line.end, line.end}, {}});
}

void Conditionals::Continue(Span line, bool isElse) {
    if (open_.empty()) return;
    Group& group = groups_[open_.back()];
    EndBranch(group, line.begin);
    group.hasElse = group.hasElse || isElse;
    group.branches.push_back({{line.end, line.end}, {}});
}

void Conditionals::Close(Span line) {
    if (open_.empty()) return;
    Group& group = groups_[open_.back()];
    EndBranch(group, line.begin);
    // Without an "#else" there is a choice to keep nothing.
    if (!group.hasElse) group.branches.push_back({{line.begin, line.begin}, {}});
    open_.pop_back();
    if (!group.whole) InnermostBalance().Add(group.branches.front().balance);
}

Balance& Conditionals::InnermostBalance() {
    return open_.empty() ? file_ : groups_[open_.back()].branches.back().balance;
}

void Conditionals::EndBranch(Group& group, std::size_t end) {
    group.branches.back().body.end = end;
    group.whole = group.whole && group.branches.back().balance.IsWhole();
}

void Conditionals::Resolve(std::size_t size) {
    while (!open_.empty()) Close({size, size});
    if (!file_.IsNothing()) TryToBalance();
    ListDropped();
}

// Asked in the order of the groups: what is around this one is known.
bool Conditionals::Reaches(const Group& group) const {
    if (group.parent == kNone) return true;
    const Group& parent = groups_[group.parent];
    return parent.reached && (parent.whole || parent.kept == group.parentBranch);
}

// Takes the first other choice with which nothing is left open.
void Conditionals::TryToBalance() {
    for (Group& group : groups_) {
        group.reached = Reaches(group);
        if (group.whole || !group.reached) continue;
        const Balance& first = group.branches.front().balance;
        for (std::size_t i = 1; i < group.branches.size(); ++i) {
            const Balance& other = group.branches[i].balance;
            const bool balances = file_.braces - first.braces + other.braces == 0 &&
                                  file_.parentheses - first.parentheses + other.parentheses == 0;
            if (!balances) continue;
            group.kept = i;
            return;
        }
    }
}

void Conditionals::ListDropped() {
    for (Group& group : groups_) {
        group.reached = Reaches(group);
        if (group.whole || !group.reached) continue;
        const std::size_t before = dropped_.size();
        for (std::size_t i = 0; i < group.branches.size(); ++i) {
            const Span& body = group.branches[i].body;
            if (i != group.kept && body.begin < body.end) dropped_.push_back(body);
        }
        if (dropped_.size() > before) cut_.push_back(group.begin);
    }
    std::sort(dropped_.begin(), dropped_.end(),
              [](const Span& a, const Span& b) { return a.begin < b.begin; });
}

}  // namespace plugincs
