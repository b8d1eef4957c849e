#include "tree/Directives.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

struct Directive {
    std::string_view keyword;
    bool movesUp;   // leaves the current node first
    bool recorded;  // makes a node below the current one
    bool entered;   // the node becomes the current one
};

// The first keyword with which the text begins decides: "#if" takes "#ifdef" too.
constexpr std::array<Directive, 12> kDirectives{{
    {"#if", false, true, true},
    {"#region", false, true, true},
    {"#else", true, true, true},
    {"#elif", true, true, true},
    {"#endif", true, false, false},
    {"#endregion", true, false, false},
    {"#line", false, true, false},
    {"#error", false, true, false},
    {"#warning", false, true, false},
    {"#define", false, true, false},
    {"#include", false, true, false},
    {"#undef", false, true, false},
}};

}  // namespace

bool StartDirective(Scanner& scanner) {
    if (!scanner.collected.IsBlank()) return false;
    scanner.collected.Restart(scanner.position);
    scanner.collected.Keep(scanner.position, scanner.position + 1);
    ++scanner.position;
    scanner.inDirective = true;
    return true;
}

DirectiveEnd EndDirective(Scanner& scanner) {
    const std::string_view text = scanner.collected.LeftTrimmed();
    const auto* const directive =
        std::find_if(kDirectives.begin(), kDirectives.end(), [text](const Directive& candidate) {
            return text.substr(0, candidate.keyword.size()) == candidate.keyword;
        });
    if (directive == kDirectives.end()) return DirectiveEnd::Unrecognised;

    if (directive->movesUp) {
        if (scanner.current->parent == nullptr) {
            std::fputs("current branch is null???\n\n", stdout);
            return DirectiveEnd::Abandoned;
        }
        scanner.current = scanner.current->parent;
    }
    if (directive->recorded) {
        ObjectBranch* const node = AddNode(scanner, *scanner.current, BranchType::Define,
                                           KindName::kDefine, scanner.lineCounter);
        if (directive->entered) scanner.current = node;
    }
    scanner.inDirective = false;
    ++scanner.position;
    scanner.collected.Restart(scanner.position);
    return DirectiveEnd::Recorded;
}
