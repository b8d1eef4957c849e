#include "output/NodeWriter.h"

#include <string>

#include "output/JsonRecords.h"
#include "output/RecordClassification.h"
#include "output/TextBuffer.h"
#include "process/Files.h"
#include "tree/Parse.h"

namespace plugincs {

namespace {

void RenderTree(const ObjectBranch& root, TextBuffer& text) {
    JsonRecords records(text);
    for (const ObjectBranch* node = &root; node != nullptr; node = NextInPreOrder(node, &root)) {
        records.Add(ClassifyRecord(*node));
    }
    records.Finish();
}

void Deliver(TextBuffer& text, std::string_view outputPath, Parse& parse) {
    if (outputPath.empty()) {
        parse.result = text.Release();
    } else {
        writeafile(text.View(), std::string(outputPath));
    }
}

}  // namespace

void StartGeneratingObjects(ObjectBranch* root, std::string_view outputPath) {
    // One id is spent here and belongs to no node; hosts read the counter after a parse.
    Parse& parse = *root->parse;
    ++parse.nextId;
    TextBuffer text(EstimateSize(*root, static_cast<std::size_t>(parse.nextId)));
    RenderTree(*root, text);
    Deliver(text, outputPath, parse);
    FreeChildren(root);
}

}  // namespace plugincs
