#include "output/RecordClassification.h"

#include "analysis/Classifiers.h"
#include "analysis/FunctionName.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

constexpr std::string_view kVariableTag = "\n      \"variable\"\n";

// `AskParts` of the contents, cached for blocks unless they were cut to a class's bare name.
Answers Ask(const ObjectBranch& node, std::string_view contents) {
    const bool same = contents.size() == node.contents.size();
    return node.look.asked && same ? node.look.answers : AskParts(contents);
}

}  // namespace

// The order matters: the first match decides.
Record ClassifyRecord(const ObjectBranch& node) {
    Record record{node, node.branchTypeAsString, node.contents, node.tags, {}};
    if (!node.simpleFunctionName.empty()) record.simpleFunctionName = node.simpleFunctionName;
    if (node.parent == nullptr) return record;
    std::string_view& kind = record.kind;
    const std::string_view parentKind = node.parent->branchTypeAsString;

    // Of nested classes the passes mark only the outermost.
    if (kind == KindName::kDefine && node.look.mayHoldClass &&
        ContainsWord(record.contents, "class")) {
        kind = KindName::kClass;
    }
    // All that follows looks at the class's bare name.
    if (kind == KindName::kClass) record.contents = WithoutBaseClause(record.contents);

    const FirstWordMeaning firstWord = MeaningOfFirstWord(record.contents);
    if (firstWord == FirstWordMeaning::Logic ||
        (node.look.mayHoldEquality && OutsideStringMatch(record.contents, "=="))) {
        kind = KindName::kLogic;
    } else if (firstWord == FirstWordMeaning::Defines) {
        // Elsewhere a "using" is a statement with a block of its own, and keeps its kind.
        if (parentKind == KindName::kNamespace || parentKind == KindName::kClass) {
            kind = KindName::kDefine;
        }
    } else if (firstWord == FirstWordMeaning::Loop) {
        kind = KindName::kLoop;
    } else if (node.branchType == BranchType::Preprocessor) {
        // A define list can look like a declaration, but is none.
    } else if (const Answers answers = Ask(node, record.contents); answers.function) {
        kind = KindName::kFunction;
        record.simpleFunctionName = functionName(record.contents);
    } else if (answers.variable) {
        // "namespace global" reads like a declaration of `global`.
        if (kind == KindName::kNamespace) return record;
        record.tags = kVariableTag;
        kind = parentKind == KindName::kClass ? KindName::kClassVar : KindName::kLine;
    }
    return record;
}

}  // namespace plugincs
