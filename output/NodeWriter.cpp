#include "output/NodeWriter.h"

#include <string>

#include "output/JsonRecords.h"
#include "output/RecordClassification.h"
#include "output/TextBuffer.h"
#include "plugin/FileIo.h"
#include "plugin/ModuleState.h"

namespace {

// Each record is a copy: what classification makes of it never reaches the tree, where the records
// of its children still read the builder's kind.
void RenderTree(const ObjectBranch& root, TextBuffer& text) {
    JsonRecords records(text);
    std::string functionNameStore;
    for (const ObjectBranch* node = &root; node != nullptr; node = NextInPreOrder(node, &root)) {
        ObjectBranch record = *node;
        ClassifyRecord(record, functionNameStore);
        records.Add(record);
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
    TextBuffer text(EstimateSize(*root));
    RenderTree(*root, text);
    Deliver(text, outputPath);
    FreeChildren(root);
}
