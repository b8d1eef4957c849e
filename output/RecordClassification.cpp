#include "output/RecordClassification.h"

#include "analysis/Classifiers.h"
#include "analysis/FunctionName.h"
#include "text/StringHelpers.h"

namespace {

constexpr std::string_view kVariableTag = "\n      \"variable\"\n";

}  // namespace

// The order of the questions is the rule: the first yes decides.
void ClassifyRecord(ObjectBranch& record, std::string& functionNameStore) {
    if (record.parent == nullptr) return;
    std::string_view& kind = record.branchTypeAsString;
    const std::string_view parentKind = record.parent->branchTypeAsString;

    // Of classes inside one another only the outermost was marked in the tree.
    if (kind == KindName::kDefine && ContainsWord(record.contents, "class")) {
        kind = KindName::kClass;
    }
    // The questions below are asked about the class's bare name.
    if (kind == KindName::kClass) LastWordNoDots(record.contents);

    if (DetectLogic(record.contents)) {
        kind = KindName::kLogic;
    } else if (DetectDefines(record.contents)) {
        // Anywhere else a "using" is a block of its own kind, and keeps it.
        if (parentKind == KindName::kNamespace || parentKind == KindName::kClass) {
            kind = KindName::kDefine;
        }
    } else if (DetectLoop(record.contents)) {
        kind = KindName::kLoop;
    } else if (record.branchType == BranchType::Preprocessor) {
        // A list of symbols can look like a declaration, and is none.
    } else if (DetectFunctionDeclaration(record.contents)) {
        kind = KindName::kFunction;
        functionNameStore = functionName(record.contents);
        record.simpleFunctionName = functionNameStore;
    } else if (DetectVariableDeclaration(record.contents)) {
        // The words "namespace global" would pass for one.
        if (kind == KindName::kNamespace) return;
        record.tags = kVariableTag;
        kind = parentKind == KindName::kClass ? KindName::kClassVar : KindName::kLine;
    }
}
