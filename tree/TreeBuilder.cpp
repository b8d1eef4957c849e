#include "tree/TreeBuilder.h"

#include "output/NodeWriter.h"
#include "text/StringHelpers.h"
#include "tree/ClassNames.h"
#include "tree/DefineListNode.h"
#include "tree/InlineFunctions.h"
#include "tree/Scanner.h"

void TreeBuilderCS(std::string_view sourcePath, std::string sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines) {
    root->branchType = BranchType::FileRoot;
    root->branchTypeAsString = KindName::kFilepath;
    root->contents = FileNameWithExtension(sourcePath);
    root->filePath = sourcePath;

    Scanner scanner(sourceText, declarationMode, *root);
    if (ScanText(scanner) == ScanStep::Abandon) return;

    GenerateInlineFunctions(root);
    ExpandClassnames(root);
    std::string defineList;
    AppendAllDefines(root, defines, defineList);
    StartGeneratingObjects(root, outputPath);
}
