#include "tests/support/RowChecks.h"

using namespace plugincs;

namespace {

std::string BrokenByPlaces(const std::vector<Row>& rows, const std::vector<std::size_t>& parents,
                           std::string_view source) {
    const Positions positions(source);
    std::size_t previous = 0;
    for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
        const std::size_t begin = positions.Of(rows[i].begin);
        const std::size_t end = positions.Of(rows[i].end);
        if (begin == std::string_view::npos) return "rows begin in the source";
        if (end == std::string_view::npos) return "rows end in the source";
        if (end < begin) return "rows end where they begin or behind";
        if (begin < previous) return "rows are in the order of the source";
        if (positions.Of(rows[parents[i]].begin) > begin) return "parents begin before children";
        if (positions.Of(rows[parents[i]].end) < end) return "parents end behind children";
        previous = begin;
    }
    return "";
}

}  // namespace

std::string BrokenByRows(const FileRows& file, std::string_view source) {
    const std::vector<Row>& rows = file.rows();
    std::vector<std::size_t> parents(rows.size());
    std::vector<std::int32_t> last(rows.size());
    for (std::size_t i = 1; i < rows.size(); ++i) {
        // In pre-order the parent is the previous row or one of its ancestors.
        for (parents[i] = i - 1; rows[parents[i]].id != rows[i].parent;) {
            if (parents[i] == 0) return "parents come before their children";
            parents[i] = parents[parents[i]];
        }
        if (rows[i].id <= rows[i - 1].id) return "ids grow";
        if (rows[i].depth != rows[parents[i]].depth + 1) return "depth is the parent's and one";
    }
    for (std::size_t i = rows.size(); i-- > 0;) {
        if (last[i] == 0) last[i] = rows[i].id;
        if (rows[i].last != last[i]) return "last is the last of the subtree";
        if (last[parents[i]] == 0) last[parents[i]] = last[i];
    }
    return source.empty() ? "" : BrokenByPlaces(rows, parents, source);
}
