#include "parsecs/diff/DeclaredFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "parsecs/diff/DeclaredHeader.h"
#include "parsecs/diff/SourceTokens.h"
#include "rows/Lines.h"

namespace plugincs {

namespace {

// A declaration while the tokens of its file are shared out.
struct Stretch {
    std::size_t begin = 0;  // of its attributes
    std::size_t text = 0;   // behind them
    std::size_t last = 0;   // byte
    std::size_t index = 0;  // in the list: of a namespace the file's
    bool isNamespace = false;
    DeclaredHeader header{};
    std::optional<std::size_t> first{};  // of several names the stretch of the first one
    std::size_t type = 0;                // the innermost type around, or itself
    std::size_t taken = 0;               // tokens of its text
    std::size_t separators = 0;          // signs that nothing has followed yet
    TextHash signature;
    TextHash beforeName;  // of the signature
    TextHash body;
    TextHash nameless;
};

bool IsSeparator(std::string_view sign) { return sign == "," || sign == ";"; }

bool IsPlainPiece(std::string_view token) {
    constexpr std::array<std::string_view, 9> kPlain{"{",   "}",    ";",   ",",     "get",
                                                     "set", "init", "add", "remove"};
    return std::find(kPlain.begin(), kPlain.end(), token) != kPlain.end();
}

class Lister {
  public:
    Lister(const FileRows& rows, HashPoint point, DeclaredFile& file)
        : rows_(rows), point_(point), file_(file), lines_(rows.source()) {}

    void List() {
        AddFile();
        for (const Row& row : rows_.rows()) Add(row);
        while (!open_.empty()) Close();
        ShareOutTokens();
        Finish();
    }

  private:
    struct Open {
        std::int32_t last;  // row
        std::size_t stretch;
    };

    Declared& Of(const Stretch& stretch) { return file_.declared[stretch.index]; }

    // Declarations, in the order of the rows.

    Stretch& AddStretch(std::size_t begin, std::size_t text, std::size_t last) {
        Stretch& stretch = stretches_.emplace_back(Stretch{.signature = TextHash(point_),
                                                           .beforeName = TextHash(point_),
                                                           .body = TextHash(point_),
                                                           .nameless = TextHash(point_)});
        stretch.begin = begin;
        stretch.text = text;
        stretch.last = last;
        return stretch;
    }

    void AddFile() {
        const Row& row = rows_.rows().front();
        AddStretch(0, 0, rows_.source().size());
        Declared& declared = file_.declared.emplace_back();
        declared.line = row.begin.line;
        declared.endLine = row.end.line;
        open_.push_back({INT32_MAX, 0});
        parents_.push_back(0);
    }

    void Add(const Row& row) {
        while (open_.back().last < row.id) Close();
        if (row.begin.line == 0) return;
        const std::size_t text = PositionOf(row.begin);
        const std::size_t begin = BeginOfAttributes(row, text);
        if (row.declares == Declares::Nothing) return;
        if (row.declares == Declares::Namespace) return AddNamespace(row, text);
        std::optional<std::size_t> first;
        if (IsFurtherName(row)) {
            first = open_.back().stretch;
            Close();
        }
        AddDeclared(row, AddStretch(begin, text, PositionOf(row.end)), first);
    }

    void AddNamespace(const Row& row, std::size_t text) {
        Stretch& stretch = AddStretch(text, text, PositionOf(row.end));
        stretch.isNamespace = true;
        SourceTokens tokens(row.text);
        while (tokens.Next().kind != SourceToken::Kind::End) ++stretch.header.tokens;
        open_.push_back({row.last, stretches_.size() - 1});
    }

    // Nothing that a name in a list declares stands around the others.
    bool IsFurtherName(const Row& row) {
        const Stretch& around = stretches_[open_.back().stretch];
        const Declares what = Of(around).declares;
        return (what == Declares::Field || what == Declares::Event) && row.declares == what;
    }

    void AddDeclared(const Row& row, Stretch& stretch, std::optional<std::size_t> first) {
        const Stretch& around = stretches_[open_.back().stretch];
        stretch.index = file_.declared.size();
        stretch.header = HeaderOf(row, point_);
        stretch.first = first;
        stretch.type = IsType(row.declares) ? stretches_.size() - 1 : around.type;
        parents_.push_back(around.index);
        Declared& declared = file_.declared.emplace_back();
        declared.declares = row.declares;
        declared.line = row.begin.line;
        declared.endLine = row.end.line;
        declared.scope = first ? Of(stretches_[*first]).scope : row.scope;
        declared.name = row.name;
        declared.nameKey = stretch.header.nameKey;
        declared.key = stretch.header.key;
        open_.push_back({row.last, stretches_.size() - 1});
    }

    void Close() {
        const Stretch& closed = stretches_[open_.back().stretch];
        open_.pop_back();
        if (closed.isNamespace) return;
        Declared& declared = Of(closed);
        declared.size = file_.declared.size() - closed.index;
    }

    std::size_t PositionOf(const Place& place) const {
        return lines_.BeginOf(static_cast<std::size_t>(place.line)) +
               static_cast<std::size_t>(place.column) - 1;
    }

    // Sections that are no declaration's are rows of their own.
    std::size_t BeginOfAttributes(const Row& row, std::size_t text) {
        const std::vector<Span>& sections = rows_.attributes();
        std::size_t begin = text;
        for (; nextSection_ < sections.size() && sections[nextSection_].begin <= text;
             ++nextSection_) {
            const bool isOwn = sections[nextSection_].begin != text && !row.attributes.empty();
            if (isOwn) begin = std::min(begin, sections[nextSection_].begin);
        }
        return begin;
    }

    // Tokens, each to the innermost declaration around it.

    void ShareOutTokens() {
        SourceTokens tokens(rows_.source());
        std::vector<std::size_t> around{0};
        std::size_t next = 1;
        for (SourceToken token = tokens.Next(); token.kind != SourceToken::Kind::End;
             token = tokens.Next()) {
            while (stretches_[around.back()].last < token.position) around.pop_back();
            for (; next < stretches_.size() && stretches_[next].begin <= token.position; ++next) {
                Enter(stretches_[next]);
                around.push_back(next);
            }
            Give(token, stretches_[around.back()]);
        }
    }

    // All names in a list have what stands before the first one.
    void Enter(Stretch& stretch) {
        if (!stretch.first) return;
        stretch.signature.Add(stretches_[*stretch.first].beforeName.value());
        stretch.nameless.Add(stretches_[*stretch.first].beforeName.value());
    }

    void Give(const SourceToken& token, Stretch& stretch) {
        if (token.position < stretch.text) return AddToSignature(token, stretch);
        const bool isDirective = token.kind == SourceToken::Kind::Directive;
        const bool isHeader = stretch.taken < stretch.header.tokens;
        if (!isHeader) return AddToBody(token, stretch);
        const std::size_t number = stretch.taken;
        if (!isDirective) ++stretch.taken;
        if (stretch.isNamespace) return;
        if (isDirective) return AddToSignature(token, stretch);
        const bool isField = IsField(Of(stretch));
        if (number < stretch.header.nameBegin) {
            if (!stretch.first) AddToSignature(token, stretch);
        } else if (number >= stretch.header.nameEnd) {
            AddToSignature(token, stretch);
        } else if (isField && !stretch.first && number == stretch.header.nameBegin) {
            EndCommonPart(stretch);
        }
    }

    static bool IsField(const Declared& declared) {
        return declared.declares == Declares::Field || declared.declares == Declares::Event;
    }

    // What all names of a list have goes into their signatures as one hash.
    void EndCommonPart(Stretch& stretch) {
        stretch.beforeName = stretch.signature;
        stretch.signature = TextHash(point_);
        stretch.nameless = TextHash(point_);
        stretch.signature.Add(stretch.beforeName.value());
        stretch.nameless.Add(stretch.beforeName.value());
    }

    void AddToSignature(const SourceToken& token, Stretch& stretch) {
        Add(token, stretch.signature);
        AddNameless(token, stretch);
    }

    void AddToBody(const SourceToken& token, Stretch& stretch) {
        if (stretch.isNamespace) return AddToFile(token);
        const Declared& declared = Of(stretch);
        const bool isSign = token.kind == SourceToken::Kind::Sign;
        if (IsType(declared.declares) && isSign && IsOfMembers(token.text)) return;
        if (IsValue(declared.declares) && isSign && IsSeparator(token.text)) {
            ++stretch.separators;
            return;
        }
        for (; stretch.separators > 0; --stretch.separators) {
            stretch.body.Add(";");
            stretch.nameless.Add(";");
        }
        PutBody(token, stretch);
    }

    // What stands between the members of a type, and around them.
    static bool IsOfMembers(std::string_view sign) {
        return sign == "{" || sign == "}" || IsSeparator(sign);
    }

    void AddToFile(const SourceToken& token) {
        if (token.kind != SourceToken::Kind::Sign || !IsOfMembers(token.text)) {
            PutBody(token, stretches_.front());
        }
    }

    void PutBody(const SourceToken& token, Stretch& stretch) {
        Declared& declared = Of(stretch);
        if (!IsPlainPiece(token.text)) declared.hasCode = true;
        Add(token, stretch.body);
        AddNameless(token, stretch);
    }

    static void Add(const SourceToken& token, TextHash& hash) {
        if (token.kind != SourceToken::Kind::Directive) return hash.Add(token.text);
        std::string_view rest = token.text.substr(1);
        hash.Add("#");
        while (!rest.empty()) {
            const std::size_t word = rest.find_first_not_of(" \t");
            if (word == std::string_view::npos) break;
            rest.remove_prefix(word);
            const std::size_t end = std::min(rest.find_first_of(" \t"), rest.size());
            hash.Add(rest.substr(0, end));
            rest.remove_prefix(end);
        }
    }

    // With its name, and that of the type around, replaced by what stands nowhere else.
    void AddNameless(const SourceToken& token, Stretch& stretch) {
        if (token.kind == SourceToken::Kind::Word) {
            if (token.text == Of(stretches_[stretch.type]).name) return stretch.nameless.Add(1);
            if (token.text == Of(stretch).name) return stretch.nameless.Add(2);
        }
        Add(token, stretch.nameless);
    }

    // Hashes of what is nested, from the innermost.

    void Finish() {
        std::vector<Declared>& declared = file_.declared;
        for (Declared& each : declared) each.file = &file_;
        for (std::size_t i = 1; i < declared.size(); ++i) {
            declared[i].parent = &declared[parents_[i]];
        }
        for (const Stretch& stretch : stretches_) {
            if (!stretch.isNamespace) PutHashes(stretch);
        }
        nested_.resize(declared.size());
        for (std::size_t i = declared.size(); i-- > 0;) PutWhole(declared[i]);
    }

    void PutHashes(const Stretch& stretch) {
        Declared& declared = Of(stretch);
        declared.signature = stretch.signature.value();
        declared.body = stretch.body.value();
        declared.nameless = stretch.nameless.value();
        declared.scopeHash = HashOf(declared.scope);
        // A file's siblings may lie in several namespaces.
        if (declared.parent == &file_.declared.front()) {
            declared.key = Mixed(declared.key, declared.scopeHash);
            declared.nameKey = Mixed(declared.nameKey, declared.scopeHash);
        }
    }

    std::uint64_t HashOf(std::string_view text) const {
        TextHash hash(point_);
        hash.Add(text);
        return hash.value();
    }

    // `whole` and `nameless` hold the sums of what is nested, and become the declaration's own.
    void PutWhole(Declared& declared) {
        const bool hasTypesName =
            declared.declares == Declares::Constructor || declared.declares == Declares::Destructor;
        const std::uint64_t name = HashOf(declared.name);
        const std::uint64_t text = Mixed(declared.signature, declared.body);
        declared.whole = Mixed(Mixed(name, text), declared.whole);
        declared.nameless = Mixed(declared.nameless, nested_[IndexOf(declared)]);
        if (declared.parent == nullptr) return;
        declared.parent->whole += Mixed(declared.whole, 1);
        nested_[IndexOf(*declared.parent)] +=
            hasTypesName ? declared.nameless : Mixed(name, declared.nameless);
    }

    std::size_t IndexOf(const Declared& declared) const {
        return static_cast<std::size_t>(&declared - file_.declared.data());
    }

    const FileRows& rows_;
    const HashPoint point_;
    DeclaredFile& file_;
    const Lines lines_;
    std::vector<Stretch> stretches_;
    std::vector<Open> open_;
    std::vector<std::size_t> parents_;  // of the declarations
    std::vector<std::uint64_t> nested_;
    std::size_t nextSection_ = 0;
};

}  // namespace

void ListDeclared(const FileRows& rows, HashPoint point, DeclaredFile& file) {
    Lister(rows, point, file).List();
}

}  // namespace plugincs
