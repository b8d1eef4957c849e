#include "parsecs/forms/outline/Skeleton.h"

#include <algorithm>

#include "parsecs/forms/outline/OneLine.h"
#include "rows/Access.h"
#include "rows/Enclosing.h"
#include "rows/Signature.h"

namespace plugincs {

namespace {

constexpr std::size_t kNone = ~std::size_t{0};

// A declaration among those around it.
struct Node {
    const Row* row = nullptr;
    Access access{};
    std::size_t parent = kNone;
    std::size_t firstType = kNone;
    std::size_t firstMember = kNone;
    std::size_t next = kNone;  // type or member of the same parent
};

// Below one node for the file, which is the first.
class DeclarationTree {
  public:
    explicit DeclarationTree(const std::vector<Row>& rows) : nodes_(1), ofRow_(rows.size(), 0) {
        Enclosing enclosing(rows);
        for (const Row& row : rows) Take(row, enclosing.Of(row));
        // The last one first, as each goes before those that are there.
        for (std::size_t i = nodes_.size() - 1; i > 0; --i) {
            Node& parent = nodes_[nodes_[i].parent];
            std::size_t& first = IsKind(i, true) ? parent.firstType : parent.firstMember;
            nodes_[i].next = first;
            first = i;
        }
    }

    const Node& At(std::size_t node) const { return nodes_[node]; }

    // All nodes but the file's, types before members; kNone behind the last.
    std::size_t After(std::size_t node) const {
        if (nodes_[node].firstType != kNone) return nodes_[node].firstType;
        if (nodes_[node].firstMember != kNone) return nodes_[node].firstMember;
        for (; node != 0; node = nodes_[node].parent) {
            if (nodes_[node].next != kNone) return nodes_[node].next;
            const std::size_t member = nodes_[nodes_[node].parent].firstMember;
            if (IsKind(node, true) && member != kNone) return member;
        }
        return kNone;
    }

  private:
    void Take(const Row& row, const Row* around) {
        const bool shown = around == nullptr || around->declares == Declares::Namespace ||
                           IsType(around->declares);
        if (row.declares == Declares::Nothing || !shown) return;
        Node node;
        node.row = &row;
        node.access = AccessOf(row, around);
        node.parent = around == nullptr ? 0 : ofRow_[static_cast<std::size_t>(around->id)];
        ofRow_[static_cast<std::size_t>(row.id)] = nodes_.size();
        nodes_.push_back(node);
    }

    bool IsKind(std::size_t node, bool type) const {
        const Declares what = nodes_[node].row->declares;
        return (IsType(what) || what == Declares::Namespace) == type;
    }

    std::vector<Node> nodes_;
    std::vector<std::size_t> ofRow_;
};

Skeleton::Detail LastDetailOf(const Node& node, bool nested) {
    using Detail = Skeleton::Detail;
    if (IsOfFile(node.access) && node.access != Access::File) return Detail::All;
    const Declares what = node.row->declares;
    if (IsType(what) && nested) return Detail::NoMembers;
    if (IsType(what) || what == Declares::Namespace) return Detail::NoNested;
    const bool isPublic = node.access == Access::Public || node.access == Access::Open;
    return isPublic ? Detail::OnlyPublic : Detail::NoPrivate;
}

// "int a, b": the second has the first one's type.
std::string FullSignature(const std::vector<Row>& rows, const Row& row) {
    const Row& around = rows[static_cast<std::size_t>(row.parent)];
    const std::string_view own = SignatureOf(row);
    const bool further = IsValue(row.declares) && around.declares == row.declares;
    if (!further) return std::string(own);
    const auto type = static_cast<std::size_t>(around.name.data() - around.text.data());
    return std::string(around.text.substr(0, type)).append(own);
}

void AppendIndent(std::size_t depth, std::string& out) {
    constexpr std::size_t kMostLevels = 20;  // or those of a hostile file would fill a disk
    out.append(2 * std::min(depth, kMostLevels), ' ');
}

// Of what is left out below the lines that are shown.
struct LeftOut {
    std::size_t depth;
    std::size_t count = 0;
};

void AppendMark(const LeftOut& leftOut, std::string& out) {
    if (leftOut.count == 0) return;
    AppendIndent(leftOut.depth + 1, out);
    out.append("\xE2\x80\xA6 ").append(std::to_string(leftOut.count)).append(" more\n");
}

}  // namespace

Skeleton::Skeleton(const FileRows& file) : path_(OneLine(file.path())) {
    const DeclarationTree tree(file.rows());
    std::vector<Line> around{{0, 0, 0, Detail::OnlyPath}};
    std::vector<std::size_t> open{0};  // the nodes of those
    for (std::size_t i = tree.After(0); i != kNone; i = tree.After(i)) {
        const Node& node = tree.At(i);
        while (open.back() != node.parent) {
            open.pop_back();
            around.pop_back();
        }
        const bool nested = node.parent != 0 && IsType(tree.At(node.parent).row->declares);
        const Row& row = *node.row;
        const std::size_t begin = text_.size();
        text_ += std::to_string(row.begin.line);
        if (row.end.line != row.begin.line) text_.append("-").append(std::to_string(row.end.line));
        text_.append(" ").append(OneLine(FullSignature(file.rows(), row)));
        const Detail last = std::min(around.back().last, LastDetailOf(node, nested));
        lines_.push_back({begin, text_.size() - begin, around.back().depth + 1, last});
        around.push_back(lines_.back());
        open.push_back(i);
    }
}

void Skeleton::Append(Detail detail, std::string& out) const {
    out.append(path_).append("\n");
    std::vector<LeftOut> open{{0}};
    for (const Line& line : lines_) {
        for (; open.back().depth >= line.depth; open.pop_back()) AppendMark(open.back(), out);
        if (line.last < detail) {
            ++open.back().count;
            continue;
        }
        AppendIndent(line.depth, out);
        out.append(text_, line.begin, line.size).append("\n");
        open.push_back({line.depth});
    }
    for (; !open.empty(); open.pop_back()) AppendMark(open.back(), out);
}

}  // namespace plugincs
