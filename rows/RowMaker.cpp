#include "rows/RowMaker.h"

#include <string>
#include <utility>

#include "output/RecordClassification.h"
#include "rows/FurtherNames.h"
#include "rows/Header.h"
#include "rows/Lines.h"
#include "rows/Texts.h"

namespace plugincs {

namespace {

// Of a statement that goes on after a block.
struct Statement {
    bool goesOn = false;
    bool wantsBody = false;  // and ends with a later block, when its parentheses are closed
    bool mayAssign = false;  // goes on if a '=' follows: the initial value of a property
    std::int64_t open = 0;   // parentheses
    Around around{};         // it
    Declaration declaration{};
};

// A node whose row may get more children.
struct OpenNode {
    const ObjectBranch* node;
    std::size_t row;
    std::size_t end;  // the position of its last byte
    Surroundings below{};
    std::string_view scopeBelow{};
    Statement statement{};
};

Around AroundBodyOf(Declares what, Around around) {
    if (what == Declares::Enum) return Around::Enum;
    if (IsType(what)) return Around::Type;
    if (what == Declares::Namespace) return Around::File;
    if (IsValue(what)) return Around::Accessors;
    // Blocks of extension members stand in a class; all else has statements.
    return around == Around::Type && what == Declares::Nothing ? Around::Type : Around::Code;
}

// The walk over a tree, as its nodes open and close: so it asks for places in the order of the
// source.
//
// The core ends a statement at each block. Where an expression goes on after one, what follows is
// made a child of the row that begins the statement, and that ends where the statement does.
class RowMaker {
  public:
    RowMaker(std::string_view source, const Reading& reading, const NodePlaces& places,
             Parse& parse, std::vector<Row>& rows)
        : source_(source),
          reading_(reading),
          places_(places),
          parse_(parse),
          texts_(source, reading),
          lines_(source),
          rows_(rows) {
        rows_.reserve(static_cast<std::size_t>(parse.objectCount) + 3);
    }

    void Run() {
        const ObjectBranch* const root = &parse_.root;
        for (const ObjectBranch* node = root; node != nullptr; node = NextInPreOrder(node, root)) {
            const NodePlace place = places_.Of(node->nodeID);
            while (!open_.empty() && !Holds(open_.back(), *node)) Close();
            if (place.begin == NodePlace::kNone) {
                AddFrame(*node, place);
            } else if (open_.back().node == node->parent) {
                Add(*node, place);
            } else {
                AddContinuation(*node, place);
            }
        }
        while (!open_.empty()) Close();
    }

  private:
    // Whether the node's row is a child of the entry's: as in the tree, or as a piece of its
    // statement.
    static bool Holds(const OpenNode& open, const ObjectBranch& node) {
        if (open.node == node.parent) return true;
        if (open.node->parent != node.parent || open.node->parent == nullptr) return false;
        const Statement& statement = open.statement;
        if (statement.mayAssign) return node.contents.starts_with('=');
        // The elements of a list are alike.
        const bool element = statement.around == Around::Value && statement.open <= 0 &&
                             node.contents.starts_with(',');
        return statement.goesOn && !element;
    }

    // The file, its global namespace and the list of conditional operands.
    void AddFrame(const ObjectBranch& node, const NodePlace& place) {
        Row& row = AddRow(ClassifyRecord(node).kind);
        row.text = node.contents;
        if (node.branchType != BranchType::Preprocessor && !source_.empty()) row.begin = {1, 1};
        open_.push_back({&node, rows_.size() - 1, EndOf(place)});
    }

    void Add(const ObjectBranch& node, const NodePlace& place) {
        Row& row = AddNodeRow(node, place);
        const std::size_t index = rows_.size() - 1;
        OpenNode& around = open_.back();
        Declaration declaration;
        if (node.branchType != BranchType::Error) {
            declaration = ReadDeclaration(row.text, around.below, place.isBlock);
        }
        PutDeclaration(declaration, row);
        if (place.isBlock) return Open(node, place, declaration);
        const std::size_t end =
            declaration.what == Declares::Enumerator ? place.behind - 1 : EndOf(place);
        if (declaration.what == Declares::Namespace) {
            around.scopeBelow = Joined(around.scopeBelow, declaration.name);
        }
        if (declaration.more) AddFurtherNames(index, NamesBehind(declaration), node, place);
        Finish(rows_[index], end);
    }

    void Open(const ObjectBranch& node, const NodePlace& place, const Declaration& declaration) {
        const OpenNode& around = open_.back();
        const std::size_t row = rows_.size() - 1;
        const Header header = ReadHeader(rows_[row].text, 0, declaration, around.below.around);
        Statement statement;
        statement.open = header.open;
        statement.around = around.below.around;
        statement.declaration = declaration;
        statement.wantsBody = header.wantsBody;
        statement.goesOn = header.kind != BlockKind::Body && !EndsAt(place);
        statement.mayAssign = declaration.what == Declares::Property && !statement.goesOn;
        const Surroundings below = Below(header.kind, declaration, around.below);
        const std::string_view scope = declaration.what == Declares::Nothing
                                           ? around.scopeBelow
                                           : Joined(around.scopeBelow, declaration.name);
        const std::size_t end = header.kind == BlockKind::Body ? EndOf(place) : EndWithSign(place);
        open_.push_back({&node, row, end, below, scope, statement});
        if (declaration.more) AddFurtherNames(row, NamesBehind(declaration), node, place);
    }

    // What follows a block in the statement of the last entry.
    void AddContinuation(const ObjectBranch& node, const NodePlace& place) {
        OpenNode& begun = open_.back();
        begun.statement.mayAssign = false;
        begun.statement.goesOn = place.isBlock;
        begun.end = EndOf(place);
        if (node.contents.empty() && !place.isBlock) return;  // only the ';'
        const std::size_t first = begun.row;
        const Statement before = begun.statement;
        const std::string_view text = AddNodeRow(node, place).text;
        const std::size_t row = rows_.size() - 1;
        if (place.isBlock) OpenContinuation(node, place);
        if (before.declaration.more) {
            AddFurtherNames(first, FindFurtherNames(text, before.open), node, place);
        }
        if (!place.isBlock) Finish(rows_[row], EndOf(place));
    }

    void OpenContinuation(const ObjectBranch& node, const NodePlace& place) {
        OpenNode& begun = open_.back();
        Statement& statement = begun.statement;
        const Header header =
            ReadHeader(rows_.back().text, statement.open, Declaration(), statement.around);
        statement.open = header.open;
        const bool isBody = statement.wantsBody && header.kind == BlockKind::Body;
        statement.goesOn = !isBody && !EndsAt(place);
        begun.end = isBody ? EndOf(place) : EndWithSign(place);
        const Surroundings around{statement.around, {}};
        const Surroundings below =
            Below(header.kind, isBody ? statement.declaration : Declaration(), around);
        open_.push_back({&node, rows_.size() - 1, EndOf(place), below, begun.scopeBelow});
    }

    void Close() {
        const OpenNode closed = open_.back();
        const bool holdsCode = rows_[closed.row].depth > 0 && rows_[closed.row].begin.line > 0;
        if (holdsCode) AddSections(closed.end);
        Finish(rows_[closed.row], closed.end);
        open_.pop_back();
    }

    static Surroundings Below(BlockKind kind, const Declaration& declaration,
                              const Surroundings& around) {
        if (kind == BlockKind::Lambda) return {Around::Code, {}};
        if (kind == BlockKind::Value) return {Around::Value, {}};
        const Around inside = AroundBodyOf(declaration.what, around.around);
        if (inside != Around::Type) return {inside, {}};
        return {inside, IsType(declaration.what) ? declaration.name : around.typeName};
    }

    // Rows.

    Row& AddRow(std::string_view kind) {
        Row& row = rows_.emplace_back();
        row.id = static_cast<std::int32_t>(rows_.size() - 1);
        row.parent = open_.empty() ? -1 : rows_[open_.back().row].id;
        row.depth = static_cast<std::int32_t>(open_.size());
        row.kind = kind;
        if (!open_.empty()) row.scope = open_.back().scopeBelow;
        return row;
    }

    Row& AddNodeRow(const ObjectBranch& node, const NodePlace& place) {
        const std::string_view attributes = TakeAttributes(place.begin);
        Row& row = AddRow(ClassifyRecord(node).kind);
        row.attributes = attributes;
        PutText(node, place, row);
        return row;
    }

    void PutText(const ObjectBranch& node, const NodePlace& place, Row& row) {
        const Span span{place.begin, place.behind};
        row.begin = lines_.At(place.begin);
        row.plain = texts_.IsPlain(span);
        row.text = row.plain ? node.contents : Kept(texts_.Of(span));
        row.plain = row.plain && node.look.plain;
    }

    static void PutDeclaration(const Declaration& declaration, Row& row) {
        row.declares = declaration.what;
        row.name = declaration.name;
        row.modifiers = declaration.modifiers;
    }

    std::vector<FurtherName> NamesBehind(const Declaration& first) const {
        return FindFurtherNames(BehindName(rows_.back().text, first), 0);
    }

    // "int a, b = 1": a row for each name after the first, below the last row, whose text has them.
    // The block that this opens is in the value of the last one.
    void AddFurtherNames(std::size_t first, const std::vector<FurtherName>& names,
                         const ObjectBranch& node, const NodePlace& place) {
        if (names.empty()) return;
        const std::vector<std::size_t> positions = PositionsOf(names, rows_.back().text, place);
        if (!place.isBlock) open_.push_back({&node, rows_.size() - 1, EndOf(place)});
        for (std::size_t i = 0; i < names.size(); ++i) {
            Row& row = AddRow(rows_[first].kind);
            row.declares = rows_[first].declares;
            row.scope = rows_[first].scope;
            row.modifiers = rows_[first].modifiers;
            row.name = names[i].name;
            row.text = names[i].text;
            row.begin = lines_.At(positions[2 * i]);
            Finish(row, positions[2 * i + 1]);
        }
        if (!place.isBlock) return open_.pop_back();
        const std::string_view scope = Joined(rows_[first].scope, names.back().name);
        open_.push_back({&node, rows_.size() - 1, EndOf(place), open_.back().below, scope});
    }

    // Of the first and the last byte of each.
    std::vector<std::size_t> PositionsOf(const std::vector<FurtherName>& names,
                                         std::string_view text, const NodePlace& place) const {
        std::vector<std::size_t> offsets;
        for (const FurtherName& name : names) {
            const auto begin = static_cast<std::size_t>(name.text.data() - text.data());
            offsets.insert(offsets.end(), {begin, begin + name.text.size() - 1});
        }
        return texts_.PositionsOf({place.begin, place.behind}, std::move(offsets));
    }

    // The last row so far is the last one of the subtree.
    void Finish(Row& row, std::size_t end) {
        row.last = rows_.back().id;
        if (row.begin.line != 0) row.end = lines_.At(end);
    }

    // Attribute sections.

    // Those before the position, as one text; those of the assembly have rows of their own.
    std::string_view TakeAttributes(std::size_t before) {
        std::string text;
        const std::vector<Span>& sections = reading_.attributes;
        for (; nextSection_ < sections.size() && sections[nextSection_].begin < before;
             ++nextSection_) {
            const std::string section = texts_.Of(sections[nextSection_]);
            if (IsGlobal(section)) {
                AddSection(section, sections[nextSection_]);
            } else {
                text.append(text.empty() ? "" : " ").append(section);
            }
        }
        return Kept(text);
    }

    // Those up to the position that nothing follows there.
    void AddSections(std::size_t end) {
        const std::vector<Span>& sections = reading_.attributes;
        for (; nextSection_ < sections.size() && sections[nextSection_].begin <= end;
             ++nextSection_) {
            AddSection(texts_.Of(sections[nextSection_]), sections[nextSection_]);
        }
    }

    void AddSection(const std::string& text, Span span) {
        Row& row = AddRow(KindName::kLine);
        row.text = Kept(text);
        row.begin = lines_.At(span.begin);
        Finish(row, span.end - 1);
    }

    // Texts.

    std::string_view Kept(std::string_view text) const {
        return text.empty() ? std::string_view() : KeepText(parse_.root, text);
    }

    // Names that would make it endless are left out: a file may nest a hundred thousand types.
    std::string_view Joined(std::string_view scope, std::string_view name) const {
        constexpr std::size_t kLongestScope = 1000;
        if (scope.empty()) return name.substr(0, name.size() > kLongestScope ? 0 : name.size());
        if (scope.size() + name.size() > kLongestScope) return scope;
        return Kept(std::string(scope).append(".").append(name));
    }

    // Places.

    // Nothing may close a block before the file ends.
    std::size_t EndOf(const NodePlace& place) const {
        if (place.end != NodePlace::kNone) return place.end;
        const bool isStatement = place.begin != NodePlace::kNone && !place.isBlock;
        return (isStatement ? place.behind : source_.size()) - 1;
    }

    // Whether the statement ends with the block, by a ';' right behind it.
    bool EndsAt(const NodePlace& place) const {
        return place.end != NodePlace::kNone && place.end + 1 < parse_.text.size() &&
               parse_.text[place.end + 1] == ';';
    }

    std::size_t EndWithSign(const NodePlace& place) const {
        return EndOf(place) + (EndsAt(place) ? 1 : 0);
    }

    const std::string_view source_;
    const Reading& reading_;
    const NodePlaces& places_;
    Parse& parse_;
    Texts texts_;
    Lines lines_;
    std::vector<Row>& rows_;
    std::vector<OpenNode> open_;
    std::size_t nextSection_ = 0;  // of attributes
};

}  // namespace

void MakeRows(std::string_view source, const Reading& reading, const NodePlaces& places,
              Parse& parse, std::vector<Row>& rows) {
    RowMaker(source, reading, places, parse, rows).Run();
}

}  // namespace plugincs
