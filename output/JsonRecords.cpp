#include "output/JsonRecords.h"

namespace {

// More than all literal pieces and numbers of one record together.
constexpr std::size_t kFixedSize = 512;

}  // namespace

std::size_t EstimateSize(const ObjectBranch& root) {
    constexpr std::size_t kUsualFixedSize = 384;  // literal pieces, kind name and ids
    std::size_t size = kFixedSize;
    for (const ObjectBranch* node = &root; node != nullptr; node = NextInPreOrder(node, &root)) {
        const std::size_t contents = node->contents.size();
        size += kUsualFixedSize + node->filePath.size() + contents + contents / 8;
    }
    return size;
}

JsonRecords::JsonRecords(TextBuffer& text) : text_(text) {
    text_.MakeRoom(kFixedSize);
    text_.Put("[\n");
}

void JsonRecords::Add(const ObjectBranch& record) {
    EscapePath(record.filePath);
    text_.MakeRoom(kFixedSize);
    text_.Put(first_ ? "  {\n    \"lineNumber\": " : ",\n  {\n    \"lineNumber\": ");
    text_.PutNumber(record.lineNumber);
    text_.Put(
        ",\n"
        "    \"lineage\": \"\",\n"
        "    \"argumentList\": \"\",\n"
        "    \"childNodeIDs\": [");
    PutChildIds(record.children);
    text_.MakeRoom(kFixedSize + record.branchTypeAsString.size() + escapedPath_.size() +
                   record.tags.size() + 2 * record.contents.size() +
                   2 * record.simpleFunctionName.size());
    text_.Put("    \"nodeID\":  ");
    text_.PutNumber(record.nodeID);
    if (record.parent == nullptr) {
        text_.Put(",\n    \"parentID\": -1");
    } else {
        text_.Put(",\n    \"parentID\":  ");
        text_.PutNumber(record.parent->nodeID);
    }
    text_.Put(
        ",\n"
        "    \"fileID\": 0,\n"
        "    \"functionID\": ");
    text_.PutNumber(record.functionID);
    text_.Put(
        ",\n"
        "    \"isCalled\": false,\n"
        "    \"branchTypeAsString\": \"");
    text_.Put(record.branchTypeAsString);
    text_.Put("\",\n    \"filePath\": \"");
    text_.Put(escapedPath_);
    text_.Put("\",\n    \"tags\": [");
    text_.Put(record.tags);
    text_.Put("],\n    \"contents\": \"");
    text_.PutEscaped(record.contents);
    text_.Put("\",\n    \"simpleFunctionName\": \"");
    text_.PutEscaped(record.simpleFunctionName);
    text_.Put(
        "\",\n"
        "    \"calloutIDs\": []\n"
        "  }");
    first_ = false;
}

void JsonRecords::Finish() {
    text_.MakeRoom(kFixedSize);
    text_.Put(first_ ? "]\n" : "\n]\n");
}

// The first id stands on its own line after three blanks, every further one after six.
void JsonRecords::PutChildIds(const ChildList& children) {
    if (children.empty()) {
        text_.Put("],\n");
        return;
    }
    text_.MakeRoom(kFixedSize);
    text_.Put("   \n   ");
    text_.PutNumber(children.first->nodeID);
    for (const ObjectBranch* child = children.first->nextSibling; child != nullptr;
         child = child->nextSibling) {
        text_.MakeRoom(kFixedSize);
        text_.Put(",\n      ");
        text_.PutNumber(child->nodeID);
    }
    text_.Put("\n  ],\n");
}

void JsonRecords::EscapePath(std::string_view path) {
    if (path.data() == path_.data() && path.size() == path_.size()) return;
    path_ = path;
    escapedPath_ = path;
    EscapeString(escapedPath_);
}
