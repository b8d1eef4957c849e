#include "plugin/FileParser.h"

#include <utility>
#include <vector>

#include "cleaner/Cleaner.h"
#include "plugin/FileIo.h"
#include "plugin/ModuleState.h"
#include "tree/NodeCreation.h"
#include "tree/TreeBuilder.h"

namespace {

// The root of one parse. The writer frees the tree below it; an abandoned build leaves that to us.
struct FileRoot : ObjectBranch {
    FileRoot() { AssignIdentity(*this); }
    FileRoot(const FileRoot&) = delete;
    FileRoot& operator=(const FileRoot&) = delete;
    ~FileRoot() { FreeChildren(this); }
};

}  // namespace

void ParseFileToFile(const std::string& inputPath, const std::string& outputPath) {
    ParseText(inputPath, ReadWholeFile(inputPath), outputPath);
}

void ParseText(const std::string& path, std::string text, const std::string& outputPath) {
    currentIndex = 0;
    objectCount = 0;
    FileRoot root;
    const std::vector<std::string> definedSymbols;
    std::vector<std::string> defines;
    text = Cleaner().CleanText(std::move(text), definedSymbols, defines);
    TreeBuilderCS(path, std::move(text), true, &root, outputPath, defines);
}
