#include "output/JsonRecords.h"

namespace {

// One id a line: three blanks before the first, six before each further one.
void PutChildIds(const ChildList& children, TextBuffer::Writer& text) {
    if (children.empty()) {
        text.Put("],\n");
        return;
    }
    text.Put("   \n   ");
    text.PutNumber(children.first->nodeID);
    for (const ObjectBranch* child = children.first->nextSibling; child != nullptr;
         child = child->nextSibling) {
        text.Put(",\n      ");
        text.PutNumber(child->nodeID);
    }
    text.Put("\n  ],\n");
}

}  // namespace

std::size_t EstimateSize(const ObjectBranch& root, std::size_t nodes) {
    constexpr std::size_t kConstantPieces = 384;  // bytes, with the kind and ids of usual size
    constexpr std::size_t kUsualText = 64;
    return nodes * (kConstantPieces + root.filePath.size() + kUsualText);
}

JsonRecords::JsonRecords(TextBuffer& text) : text_(text) { TextBuffer::Writer(text_).Put("[\n"); }

void JsonRecords::Add(const Record& record) {
    const ObjectBranch& node = record.node;
    TextBuffer::Writer text(text_);
    if (!first_) text.Put(",\n");
    text.Put("  {\n    \"lineNumber\": ");
    text.PutNumber(node.lineNumber);
    text.Put(
        ",\n"
        "    \"lineage\": \"\",\n"
        "    \"argumentList\": \"\",\n"
        "    \"childNodeIDs\": [");
    PutChildIds(node.children, text);
    text.Put("    \"nodeID\":  ");
    text.PutNumber(node.nodeID);
    if (node.parent == nullptr) {
        text.Put(",\n    \"parentID\": -1");
    } else {
        text.Put(",\n    \"parentID\":  ");
        text.PutNumber(node.parent->nodeID);
    }
    text.Put(
        ",\n"
        "    \"fileID\": 0,\n"
        "    \"functionID\": ");
    text.PutNumber(node.functionID);
    text.Put(
        ",\n"
        "    \"isCalled\": false,\n"
        "    \"branchTypeAsString\": \"");
    text.Put(record.kind);
    text.Put(PathMember(node.filePath));
    if (!record.tags.empty()) text.Put(record.tags);
    text.Put("],\n    \"contents\": \"");
    text.PutEscaped(record.contents);
    text.Put("\",\n    \"simpleFunctionName\": \"");
    text.PutEscaped(record.simpleFunctionName);
    text.Put(
        "\",\n"
        "    \"calloutIDs\": []\n"
        "  }");
    first_ = false;
}

void JsonRecords::Finish() { TextBuffer::Writer(text_).Put(first_ ? "]\n" : "\n]\n"); }

// The path, escaped, with the constant pieces around it; cached for all records that share it.
std::string_view JsonRecords::PathMember(std::string_view path) {
    if (path.data() != path_.data() || path.size() != path_.size() || pathMember_.empty()) {
        std::string escaped(path);
        pathMember_ = "\",\n    \"filePath\": \"" + EscapeString(escaped) + "\",\n    \"tags\": [";
        path_ = path;
    }
    return pathMember_;
}
