#include "tree/Directives.h"

#include <algorithm>
#include <array>

#include "tree/Parse.h"

namespace plugincs {

namespace {

struct Directive {
    std::string_view keyword;
    bool movesUp;   // leaves the current node first
    bool recorded;  // adds a node below the current one
    bool entered;   // that node becomes the current one
};

// A prefix match in this order: "#if" matches "#ifdef" too.
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

bool StartDirective(ScanState& scan) {
    if (!scan.collected.IsBlank()) return false;
    scan.collected.Restart(scan.position);
    scan.collected.Keep(scan.position, scan.position + 1);
    ++scan.position;
    scan.inDirective = true;
    return true;
}

DirectiveEnd EndDirective(ScanState& scan) {
    const std::string_view text = scan.collected.LeftTrimmed();
    const auto* const directive = std::find_if(
        kDirectives.begin(), kDirectives.end(),
        [text](const Directive& candidate) { return text.starts_with(candidate.keyword); });
    if (directive == kDirectives.end()) return DirectiveEnd::Unrecognised;

    if (directive->movesUp) {
        if (scan.current->parent == nullptr) {
            scan.root->parse->traces.Write("current branch is null???\n\n");
            return DirectiveEnd::Abandoned;
        }
        LeaveNode(scan, NodePlace::kNone);
    }
    if (directive->recorded) {
        ObjectBranch* const node =
            AddNode(scan, *scan.current, Kinds::kDefine, scan.lineCounter, NodePlace::kNone);
        if (directive->entered) scan.current = node;
    }
    scan.inDirective = false;
    ++scan.position;
    scan.collected.Restart(scan.position);
    return DirectiveEnd::Recognised;
}

}  // namespace plugincs
