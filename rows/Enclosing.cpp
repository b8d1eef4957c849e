#include "rows/Enclosing.h"

namespace plugincs {

const Row* Enclosing::Of(const Row& row) {
    while (!around_.empty() && around_.back().last < row.id) around_.pop_back();
    auto entry = around_.rbegin();
    // The further names of a declaration stand below the first; and a scope that would be too long
    // does without some names.
    while (entry != around_.rend() && entry->row->scope == row.scope) ++entry;
    const Row* const found = entry == around_.rend() ? nullptr : entry->row;
    if (row.declares == Declares::Nothing) return found;
    const bool toTheEnd = row.declares == Declares::Namespace && row.last == row.id;
    around_.push_back(
        {&row, toTheEnd ? rows_[static_cast<std::size_t>(row.parent)].last : row.last});
    return found;
}

}  // namespace plugincs
