#include "parsecs/rows/ParsedFile.h"

#include <utility>

#include "output/RecordClassification.h"
#include "plugin/Pipeline.h"

namespace {

// Walks the tree as its nodes open and close: so it asks for places in the order of the source,
// but for a directive that closes a section and opens the next one.
class RowMaker {
  public:
    RowMaker(std::size_t sourceSize, Lines& lines, const SourcePlaces& places,
             std::vector<Row>& rows)
        : sourceSize_(sourceSize),
          lines_(lines),
          nodes_(places.nodes),
          cleaning_(places.cleaning),
          rows_(rows) {}

    void Add(const ObjectBranch& root) {
        for (const ObjectBranch* node = &root; node != nullptr;
             node = NextInPreOrder(node, &root)) {
            while (!open_.empty() && open_.back().node != node->parent) Close();
            Open(*node);
        }
        while (!open_.empty()) Close();
    }

  private:
    // A node with children, whose subtree the next one may belong to.
    struct OpenNode {
        const ObjectBranch* node;
        std::size_t row;
        std::size_t end;  // position in the cleaned text, or none
        Scope below;
    };

    void Open(const ObjectBranch& node) {
        const NodePlace place = nodes_.Of(node.nodeID);
        const bool ofSource = place.begin != NodePlace::kNone;
        const Scope scope = open_.empty() ? Scope() : open_.back().below;
        const Declaration declared = ofSource ? DeclaredBy(node.contents, scope) : Declaration();
        Row& row = rows_.emplace_back(MakeRow(node));
        row.name = declared.name;
        row.declares = declared.kind;
        if (ofSource) {
            row.begin = lines_.At(cleaning_.SourceOf(place.begin));
        } else if (node.branchType != BranchType::Preprocessor && sourceSize_ > 0) {
            row.begin = {1, 1};
        }
        if (node.children.empty()) return Finish(row, place.end);
        open_.push_back(
            {&node, rows_.size() - 1, place.end, ScopeBelow(node.contents, declared, scope)});
    }

    void Close() {
        Finish(rows_[open_.back().row], open_.back().end);
        open_.pop_back();
    }

    // The last row so far is the last one of the subtree. A block that was never closed goes to the
    // end of the source.
    void Finish(Row& row, std::size_t end) {
        row.last = rows_.back().id;
        if (row.begin.line == 0) return;
        row.end = lines_.At(end == NodePlace::kNone ? sourceSize_ - 1 : cleaning_.SourceOf(end));
    }

    Row MakeRow(const ObjectBranch& node) const {
        Row row{};
        row.id = node.nodeID;
        row.parent = node.parent == nullptr ? -1 : node.parent->nodeID;
        row.depth = static_cast<std::int32_t>(open_.size());
        row.kind = ClassifyRecord(node).kind;
        row.text = node.contents;
        row.plain = node.look.plain;  // cleaned texts are printable
        return row;
    }

    const std::size_t sourceSize_;
    Lines& lines_;
    const NodePlaces& nodes_;
    CleaningMaps::Reader cleaning_;
    std::vector<Row>& rows_;
    std::vector<OpenNode> open_;
};

}  // namespace

ParsedFile::ParsedFile(ReadSource source)
    : parse_(std::move(source.path), std::move(source.text), source.traces) {
    const std::size_t size = parse_.text.size();
    Lines lines(parse_.text);
    SourcePlaces places;
    BuildTree(parse_, places);
    if (parse_.end == Parse::End::Abandoned) return;
    rows_.reserve(static_cast<std::size_t>(parse_.objectCount) + 2);
    RowMaker(size, lines, places, rows_).Add(parse_.root);
}
