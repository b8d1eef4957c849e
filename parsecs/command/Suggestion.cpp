#include "parsecs/command/Suggestion.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "parsecs/command/OptionTable.h"

namespace plugincs {

namespace {

struct Synonym {
    std::string_view word;
    std::string_view option;
};

// What people look for who come from other programs.
constexpr Synonym kSynonyms[] = {
    {"budget", "max-bytes"},
    {"ctags", "tags"},
    {"database", "db"},
    {"etags", "tags"},
    {"filter", "exclude"},
    {"ignore", "exclude"},
    {"json", "strict"},
    {"limit", "max-bytes"},
    {"map", "html"},
    {"max-size", "max-bytes"},
    {"ndjson", "jsonl"},
    {"no-gitignore", "no-ignore"},
    {"output-dir", "into"},
    {"parallel", "jobs"},
    {"rows", "jsonl"},
    {"signatures", "declarations"},
    {"skeleton", "declarations"},
    {"skip", "exclude"},
    {"sql", "db"},
    {"sqlite", "db"},
    {"threads", "jobs"},
    {"tokens", "max-bytes"},
    {"tree", "outline"},
    {"usage", "help"},
};

// How many letters must be changed, added, dropped or swapped to make one of the other.
std::size_t Mistypings(std::string_view from, std::string_view to) {
    std::vector<std::size_t> above(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::vector<std::size_t> next(to.size() + 1, i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t changed = row[j] + (from[i] == to[j] ? 0 : 1);
            next[j + 1] = std::min({changed, row[j + 1] + 1, next[j] + 1});
            const bool swapped = i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j];
            if (swapped) next[j + 1] = std::min(next[j + 1], above[j - 1] + 1);
        }
        above = std::exchange(row, std::move(next));
    }
    return row.back();
}

// "vrsn": the first letter, and at least half of them, in their order.
bool Shortens(std::string_view name, std::string_view option) {
    if (name.size() < 2 || 2 * name.size() < option.size() || name[0] != option[0]) return false;
    std::size_t taken = 0;
    for (const char c : option) taken += taken < name.size() && name[taken] == c ? 1 : 0;
    return taken == name.size();
}

// "strict-json"
bool HasWord(std::string_view name, std::string_view word) {
    const std::size_t at = name.find(word);
    if (at == std::string_view::npos) return false;
    const std::size_t end = at + word.size();
    return (at == 0 || name[at - 1] == '-') && (end == name.size() || name[end] == '-');
}

constexpr std::size_t kUnlike = ~std::size_t{0};

// How far the name is from the option's, kUnlike for too far.
std::size_t Distance(std::string_view name, std::string_view option) {
    if (name.size() >= 3 && option.starts_with(name)) return 0;
    if (Shortens(name, option) || HasWord(name, option)) return 1;
    const std::size_t mistypings = Mistypings(name, option);
    return mistypings <= std::max(name.size(), option.size()) / 3 ? mistypings : kUnlike;
}

}  // namespace

std::string_view MeantBy(std::string_view name) {
    constexpr std::size_t kMostTyped = 100;
    if (name.size() > kMostTyped) return {};
    for (const Synonym& synonym : kSynonyms) {
        if (synonym.word == name) return synonym.option;
    }
    std::size_t nearest = kUnlike;
    std::string_view meant;
    for (const OptionGroup& group : OptionGroups()) {
        for (const Option& option : group.options) {
            const std::size_t distance =
                option.help.empty() ? kUnlike : Distance(name, option.name);
            if (distance >= nearest) continue;
            nearest = distance;
            meant = option.name;
        }
    }
    return meant;
}

}  // namespace plugincs
