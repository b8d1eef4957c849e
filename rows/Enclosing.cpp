#include "rows/Enclosing.h"

namespace plugincs {

const Row* Enclosing::Of(const Row& row) {
    while (!around_.empty() && around_.back().last < row.id) around_.pop_back();
    const Row* around = around_.empty() ? nullptr : around_.back().row;
    // The further names of a declaration stand below the first; and a scope that would be too long
    // does without some names.
    if (around != nullptr && around->scope == row.scope) around = around_.back().around;
    if (row.declares == Declares::Nothing) return around;
    const bool toTheEnd = row.declares == Declares::Namespace && row.last == row.id;
    const std::int32_t last =
        toTheEnd ? rows_[static_cast<std::size_t>(row.parent)].last : row.last;
    around_.push_back({&row, around, last});
    return around;
}

}  // namespace plugincs
