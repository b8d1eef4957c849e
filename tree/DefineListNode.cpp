#include "tree/DefineListNode.h"

#include "text/StringHelpers.h"
#include "tree/NodeCreation.h"

void AppendAllDefines(ObjectBranch* root, const std::vector<std::string>& defines,
                      std::string& contents) {
    for (const std::string& define : defines) contents.append(define).push_back('\n');
    ObjectBranch* const node = MakeNode(*root);
    node->branchType = BranchType::Preprocessor;
    node->branchTypeAsString = KindName::kPreprocessor;
    node->filePath = root->filePath;
    node->contents = trim(contents);
}
