#include "parsecs/diff/Change.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace plugincs {

namespace {

std::optional<ChangedPlace> PlaceOf(const Declared* declared) {
    if (declared == nullptr) return std::nullopt;
    return ChangedPlace{declared->scope, declared->name, declared->file->path, declared->line,
                        declared->endLine};
}

auto OrderOf(const Change& change) {
    const ChangedPlace& place = change.now ? *change.now : *change.old;
    return std::tuple(change.order.first, place.line, change.now.has_value(), change.order.second,
                      change.kind);
}

}  // namespace

std::string_view NameOf(ChangeKind kind) {
    constexpr std::array<std::string_view, 6> kNames{"added", "removed", "signature",
                                                     "body",  "moved",   "renamed"};
    return kNames[static_cast<std::size_t>(kind)];
}

Change MakeChange(ChangeKind kind, const Declared* old, const Declared* now) {
    const Declared& shown = now != nullptr ? *now : *old;
    const auto number = static_cast<std::size_t>(&shown - shown.file->declared.data());
    return {kind,
            shown.IsFile() ? "file" : NameOf(shown.declares),
            PlaceOf(old),
            PlaceOf(now),
            {shown.file->pair, number}};
}

void Sort(std::vector<Change>& changes) {
    std::sort(changes.begin(), changes.end(),
              [](const Change& a, const Change& b) { return OrderOf(a) < OrderOf(b); });
}

}  // namespace plugincs
