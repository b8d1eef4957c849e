#include "output/JsonRecords.h"

namespace plugincs {

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

void PutContents(const Record& record, TextBuffer::Writer& text) {
    const FirstLook& look = record.node.look;
    if (!look.plain) {
        text.PutEscaped(record.contents);
    } else if (look.brief) {
        text.PutShort(record.contents);
    } else {
        text.Put(record.contents);
    }
}

bool IsSame(std::string_view one, std::string_view other) {
    return one.data() == other.data() && one.size() == other.size();
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
    text.Put(KindToTags(record));
    PutContents(record, text);
    text.Put("\",\n    \"simpleFunctionName\": \"");
    text.PutEscaped(record.simpleFunctionName);
    text.Put(
        "\",\n"
        "    \"calloutIDs\": []\n"
        "  }");
    first_ = false;
}

void JsonRecords::Finish() { TextBuffer::Writer(text_).Put(first_ ? "]\n" : "\n]\n"); }

// The members from the kind to the tags, as far as the contents. Cached, as the records of a file
// share a path, and have few kinds and tags.
std::string_view JsonRecords::KindToTags(const Record& record) {
    const std::string_view path = record.node.filePath;
    if (!IsSame(path, path_) || pathMember_.empty()) {
        std::string escaped(path);
        pathMember_ = "\",\n    \"filePath\": \"" + EscapeString(escaped) + "\",\n    \"tags\": [";
        path_ = path;
        members_ = {};
    }
    // The sum tells all kinds and tags apart.
    const std::string_view kind = record.kind;
    const auto last = static_cast<unsigned char>(kind.empty() ? 0 : kind.back());
    Members& members = members_[(kind.size() + last + record.tags.size()) % members_.size()];
    if (members.text.empty() || !IsSame(kind, members.kind) || !IsSame(record.tags, members.tags)) {
        members.text.assign(kind).append(pathMember_).append(record.tags);
        members.text.append("],\n    \"contents\": \"");
        members.kind = kind;
        members.tags = record.tags;
    }
    return members.text;
}

}  // namespace plugincs
