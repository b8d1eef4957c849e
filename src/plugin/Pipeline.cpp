#include "plugin/Pipeline.h"

#include <utility>

#include "cleaner/Cleaner.h"
#include "output/NodeWriter.h"
#include "text/StringHelpers.h"
#include "tree/Passes.h"
#include "tree/Scanner.h"

namespace plugincs {

namespace {

// From the cleaned text to the finished tree; false if the build was abandoned.
bool ScanAndRefine(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch& root, const std::vector<std::string>& defines,
                   NodePlaces* places) {
    root.parse->leftOver.emplace();
    SetKind(root, Kinds::kFile);
    root.contents = FileNameWithExtension(sourcePath);
    root.filePath = sourcePath;

    ScanState scan(sourceText, declarationMode, root, places);
    ScanText(scan);
    if (root.parse->end == Parse::End::Abandoned) return false;

    GenerateInlineFunctions(&root);
    ExpandClassnames(&root);
    AppendAllDefines(&root, defines);
    return true;
}

}  // namespace

void ParseSource(Parse& parse, std::string_view outputPath) {
    parse.text = Cleaner().CleanText(std::move(parse.text), {}, parse.defines, parse.traces);
    TreeBuilderCS(parse.path, parse.text, true, &parse.root, outputPath, parse.defines);
}

void TreeBuilderCS(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines) {
    if (ScanAndRefine(sourcePath, sourceText, declarationMode, *root, defines, nullptr)) {
        StartGeneratingObjects(root, outputPath);
    }
}

void BuildTree(Parse& parse, NodePlaces& places) {
    ScanAndRefine(parse.path, parse.text, true, parse.root, parse.defines, &places);
}

}  // namespace plugincs
