#include "output/NodeWriter.h"

#include <string>

#include "output/JsonRecords.h"
#include "output/RecordClassification.h"
#include "output/TextBuffer.h"
#include "process/Files.h"
#include "process/ModuleState.h"

namespace {

void RenderTree(const ObjectBranch& root, TextBuffer& text) {
    JsonRecords records(text);
    for (const ObjectBranch* node = &root; node != nullptr; node = NextInPreOrder(node, &root)) {
        records.Add(ClassifyRecord(*node));
    }
    records.Finish();
}

void Deliver(TextBuffer& text, std::string_view outputPath) {
    if (outputPath.empty()) {
        returnResult = text.Release();
    } else {
        writeafile(text.View(), std::string(outputPath));
    }
}

}  // namespace

void StartGeneratingObjects(ObjectBranch* root, std::string_view outputPath) {
    // One id is spent here and belongs to no node; hosts read the counter after a parse.
    ++currentIndex;
    TextBuffer text(EstimateSize(*root, static_cast<std::size_t>(currentIndex)));
    RenderTree(*root, text);
    Deliver(text, outputPath);
    FreeChildren(root);
}
