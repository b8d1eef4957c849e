#include "parsecs/rows/ParsedFile.h"

#include <algorithm>
#include <utility>

#include "output/RecordClassification.h"
#include "parsecs/rows/DeclaredName.h"

namespace {

// Counters start before the file's root is made, which takes the first id.
std::string CountFromHere(std::string path) {
    StartCounting();
    return path;
}

}  // namespace

ParsedFile::ParsedFile(std::string path, std::string source)
    : size_(source.size()), file_(CountFromHere(std::move(path)), std::move(source)) {
    FindLines(file_.text);
    SourcePlaces places;
    const ScanStep end = BuildTree(file_, places);
    if (end == ScanStep::Abandon) return;
    outcome_ = end == ScanStep::Stop ? Outcome::StoppedEarly : Outcome::Whole;
    AddRows(places);
}

void ParsedFile::FindLines(std::string_view source) {
    lineStarts_.push_back(0);
    for (std::size_t i = 0; i < source.size(); ++i) {
        const bool pair = source[i] == '\r' && i + 1 < source.size() && source[i + 1] == '\n';
        if (!pair && (source[i] == '\n' || source[i] == '\r')) lineStarts_.push_back(i + 1);
    }
}

Place ParsedFile::PlaceOf(std::size_t position) const {
    const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), position);
    return {static_cast<std::int32_t>(next - lineStarts_.begin()),
            static_cast<std::int32_t>(position - *std::prev(next) + 1)};
}

// The ids of a subtree are known when its last row has been made.
void ParsedFile::AddRows(const SourcePlaces& places) {
    struct Open {
        std::size_t row;  // whose subtree the next one may belong to
        Scope below;
    };
    const ObjectBranch* const root = &file_.root;
    std::vector<Open> open;
    const auto close = [&] {
        rows_[open.back().row].last = rows_.back().id;
        open.pop_back();
    };
    for (const ObjectBranch* node = root; node != nullptr; node = NextInPreOrder(node, root)) {
        while (!open.empty() && rows_[open.back().row].id != node->parent->nodeID) close();
        Row row = MakeRow(*node, places.Of(node->nodeID));
        row.depth = static_cast<std::int32_t>(open.size());
        const Scope scope = open.empty() ? Scope{} : open.back().below;
        // The first two rows, and the list of operands, have texts that are not the source's.
        const bool ofSource = places.nodes.Of(node->nodeID).begin != NodePlace::kNone;
        const Declaration declared = ofSource ? DeclaredBy(row.text, scope) : Declaration{};
        row.name = declared.name;
        open.push_back({rows_.size(), ScopeBelow(row.text, declared, scope)});
        rows_.push_back(row);
    }
    while (!open.empty()) close();
}

Row ParsedFile::MakeRow(const ObjectBranch& node, const NodePlace& place) const {
    Row row{};
    row.id = node.nodeID;
    row.parent = node.parent == nullptr ? -1 : node.parent->nodeID;
    row.kind = ClassifyRecord(node).kind;
    row.text = node.contents;
    if (node.branchType == BranchType::Preprocessor || size_ == 0) return row;
    // The file and the global namespace are the whole of it; a block that is never closed goes to
    // its end.
    row.begin = PlaceOf(place.begin == NodePlace::kNone ? 0 : place.begin);
    row.end = PlaceOf(place.end == NodePlace::kNone ? size_ - 1 : place.end);
    return row;
}
