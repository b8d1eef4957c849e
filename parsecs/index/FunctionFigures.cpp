#include "parsecs/index/FunctionFigures.h"

#include <algorithm>
#include <utility>

namespace {

// Walks over the rows with what is open around the row at hand. Until a function is closed, its
// figures count levels from the file and not from itself.
class FigureWalk {
  public:
    std::vector<FunctionFigures> Over(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            CloseBefore(row.id);
            Count(row);
            if (row.declares == Declaration::Kind::Function) Open(row);
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

std::vector<FunctionFigures> FiguresOf(const std::vector<Row>& rows) {
    return FigureWalk().Over(rows);
}
