#include "rows/FunctionFigures.h"

#include <algorithm>
#include <utility>

#include "rows/Tokens.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

constexpr std::uint64_t kPrime = 0x100000001B3U;

std::uint64_t Mixed(std::uint64_t hash, std::uint64_t next) { return (hash ^ next) * kPrime + 1; }

// Of the list after the name; "operator (" has none before it.
std::int32_t CountParameters(const Row& row) {
    const auto from = static_cast<std::size_t>(row.name.data() + row.name.size() - row.text.data());
    Tokens tokens(row.text.substr(from));
    if (tokens.Peek() == '<' && !tokens.SkipTypeArguments()) return 0;
    if (tokens.Peek() != '(') return 0;
    tokens.Skip();
    if (tokens.Peek() == ')') return 0;
    std::int32_t count = 1;
    while (const char c = tokens.Peek()) {
        if (c == ')') break;
        if (c == ',') ++count;
        if (c == '"' || c == '\'') {
            tokens.SkipLiteral();
        } else if (c == '(' || c == '[') {
            tokens.SkipBrackets();
        } else if (c != '<' || !tokens.SkipTypeArguments()) {
            tokens.Skip();
        }
    }
    return count;
}

// Of all rows, a hash of the texts below each; 0 where there are none.
std::vector<std::uint64_t> HashesBelow(const std::vector<Row>& rows) {
    std::vector<std::uint64_t> below(rows.size());
    for (std::size_t i = rows.size(); i-- > 1;) {
        const std::uint64_t own = HashOf(rows[i].text);
        std::uint64_t& parent = below[static_cast<std::size_t>(rows[i].parent)];
        parent = Mixed(parent, Mixed(own, below[i]));
    }
    return below;
}

// A body may be an expression.
std::optional<std::uint64_t> HashOfBody(const Row& function, std::uint64_t below) {
    const std::size_t arrow = function.text.find("=>");
    if (arrow != std::string_view::npos) return Mixed(HashOf(function.text.substr(arrow)), below);
    return below == 0 ? std::nullopt : std::optional(below);
}

// Walks over the rows with what is open around the row at hand. Until a function is closed, its
// figures count levels from the file and not from itself.
class FigureWalk {
  public:
    std::vector<FunctionFigures> Over(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            CloseBefore(row.id);
            Count(row);
            if (IsFunction(row.declares)) Open(row);
        }
        CloseBefore(INT32_MAX);
        return std::move(functions_);
    }

  private:
    struct OpenFunction {
        std::size_t index;  // in functions_
        std::int32_t depth;
        std::int32_t loops;
    };

    void Open(const Row& row) {
        const auto loops = static_cast<std::int32_t>(loops_.size());
        open_.push_back({functions_.size(), row.depth, loops});
        functions_.push_back({row.id, row.last, 0, row.depth + 1, 0, loops});
        functions_.back().parameters = CountParameters(row);
    }

    void Count(const Row& row) {
        const bool loop = row.kind == KindName::kLoop;
        if (loop) loops_.push_back(row.last);
        if (open_.empty()) return;
        FunctionFigures& figures = functions_[open_.back().index];
        ++figures.size;
        if (loop || row.kind == KindName::kLogic) ++figures.branches;
        figures.nesting = std::max(figures.nesting, row.depth);
        figures.loops = std::max(figures.loops, static_cast<std::int32_t>(loops_.size()));
    }

    void CloseBefore(std::int32_t id) {
        while (!open_.empty() && functions_[open_.back().index].last < id) Close();
        while (!loops_.empty() && loops_.back() < id) loops_.pop_back();
    }

    // What lies in a function within another lies in that one too.
    void Close() {
        const OpenFunction closed = open_.back();
        open_.pop_back();
        FunctionFigures& inner = functions_[closed.index];
        if (!open_.empty()) {
            FunctionFigures& outer = functions_[open_.back().index];
            outer.size += inner.size;
            outer.branches += inner.branches;
            outer.nesting = std::max(outer.nesting, inner.nesting);
            outer.loops = std::max(outer.loops, inner.loops);
        }
        inner.nesting -= closed.depth + 1;
        inner.loops -= closed.loops;
    }

    std::vector<FunctionFigures> functions_;
    std::vector<OpenFunction> open_;
    std::vector<std::int32_t> loops_;  // the last row of each
};

}  // namespace

std::uint64_t HashOf(std::string_view bytes) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * kPrime;
    return hash;
}

std::vector<FunctionFigures> FiguresOf(const std::vector<Row>& rows) {
    std::vector<FunctionFigures> functions = FigureWalk().Over(rows);
    const std::vector<std::uint64_t> below = HashesBelow(rows);
    for (FunctionFigures& figures : functions) {
        const auto at = static_cast<std::size_t>(figures.id);
        figures.body = HashOfBody(rows[at], below[at]);
    }
    return functions;
}

}  // namespace plugincs
