#include "output/RecordClassification.h"

#include "analysis/Classifiers.h"
#include "analysis/FunctionName.h"
#include "text/StringHelpers.h"

namespace {

constexpr std::string_view kVariableTag = "\n      \"variable\"\n";

// The refinement of blocks has asked already, but not about a class's bare name.
Declares Ask(const ObjectBranch& node, std::string_view contents) {
    const bool same = contents.size() == node.contents.size();
    return node.asked && same ? node.declares : AskParts(contents);
}

}  // namespace

// The order of the questions is the rule: the first yes decides.
Record ClassifyRecord(const ObjectBranch& node) {
    Record record{node, node.branchTypeAsString, node.contents, node.tags,
                  std::string(node.simpleFunctionName)};
    if (node.parent == nullptr) return record;
    std::string_view& kind = record.kind;
    const std::string_view parentKind = node.parent->branchTypeAsString;

    // Of classes inside one another only the outermost was marked in the tree.
    if (kind == KindName::kDefine && node.mayHoldClass && ContainsWord(record.contents, "class")) {
        kind = KindName::kClass;
    }
    // The questions below are asked about the class's bare name.
    if (kind == KindName::kClass) record.contents = WithoutBaseClause(record.contents);

    const FirstWordMeaning firstWord = MeaningOfFirstWord(record.contents);
    if (firstWord == FirstWordMeaning::Logic ||
        (node.mayHoldEquality && OutsideStringMatch(record.contents, "=="))) {
        kind = KindName::kLogic;
    } else if (firstWord == FirstWordMeaning::Defines) {
        // Anywhere else a "using" is a block of its own kind, and keeps it.
        if (parentKind == KindName::kNamespace || parentKind == KindName::kClass) {
            kind = KindName::kDefine;
        }
    } else if (firstWord == FirstWordMeaning::Loop) {
        kind = KindName::kLoop;
    } else if (node.branchType == BranchType::Preprocessor) {
        // A list of symbols can look like a declaration, and is none.
    } else if (const Declares declares = Ask(node, record.contents); declares.function) {
        kind = KindName::kFunction;
        record.simpleFunctionName = functionName(record.contents);
    } else if (declares.variable) {
        // "namespace global" reads like a declaration of `global`.
        if (kind == KindName::kNamespace) return record;
        record.tags = kVariableTag;
        kind = parentKind == KindName::kClass ? KindName::kClassVar : KindName::kLine;
    }
    return record;
}
