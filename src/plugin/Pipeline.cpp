#include "plugin/Pipeline.h"

#include <utility>

#include "output/NodeWriter.h"
#include "process/Files.h"
#include "process/ModuleState.h"
#include "text/StringHelpers.h"
#include "tree/Passes.h"

namespace {

// From the cleaned text to the finished tree.
ScanStep ScanAndRefine(std::string_view sourcePath, std::span<char> sourceText,
                       bool declarationMode, ObjectBranch& root,
                       const std::vector<std::string>& defines, NodePlaces* places) {
    chunk.clear();
    SetKind(root, Kinds::kFile);
    root.contents = FileNameWithExtension(sourcePath);
    root.filePath = sourcePath;

    ScanState scan(sourceText, declarationMode, root, places);
    const ScanStep end = ScanText(scan);
    if (end == ScanStep::Abandon) return end;

    GenerateInlineFunctions(&root);
    ExpandClassnames(&root);
    AppendAllDefines(&root, defines);
    return end;
}

}  // namespace

void ParseFileToFile(std::string inputPath, std::string_view outputPath) {
    StartCounting();
    std::string text = ReadWholeFile(inputPath);
    ParseText(std::move(inputPath), std::move(text), outputPath);
}

void ParseText(std::string path, std::string text, std::string_view outputPath) {
    StartCounting();
    SourceFile file(std::move(path), std::move(text));
    file.text = Cleaner().CleanText(std::move(file.text), {}, file.defines);
    TreeBuilderCS(file.path, file.text, true, &file.root, outputPath, file.defines);
}

void TreeBuilderCS(std::string_view sourcePath, std::span<char> sourceText, bool declarationMode,
                   ObjectBranch* root, std::string_view outputPath,
                   const std::vector<std::string>& defines) {
    const ScanStep end =
        ScanAndRefine(sourcePath, sourceText, declarationMode, *root, defines, nullptr);
    if (end != ScanStep::Abandon) StartGeneratingObjects(root, outputPath);
}

void StartCounting() {
    currentIndex = 0;
    objectCount = 0;
}

ScanStep BuildTree(SourceFile& file, SourcePlaces& places) {
    file.text = Cleaner().CleanText(std::move(file.text), {}, file.defines, &places.cleaning);
    return ScanAndRefine(file.path, file.text, true, file.root, file.defines, &places.nodes);
}
