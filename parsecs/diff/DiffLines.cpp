#include "parsecs/diff/DiffLines.h"

#include <algorithm>
#include <array>

#include "parsecs/json/JsonString.h"
#include "rows/Utf8.h"

namespace plugincs {

namespace {

const ChangedPlace& ShownPlace(const Change& change) {
    return change.now ? *change.now : *change.old;
}

// Rows.

std::string NumberOrNull(std::int32_t line) { return line == 0 ? "null" : std::to_string(line); }

void AppendPlace(const std::optional<ChangedPlace>& place, std::array<const char*, 3> names,
                 std::string& out) {
    out.append(names[0]).append(place ? JsonString(place->file) : "null");
    out.append(names[1]).append(place ? NumberOrNull(place->line) : "null");
    out.append(names[2]).append(place ? NumberOrNull(place->endLine) : "null");
}

// Lines.

std::string Shown(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::string_view sequence = text.substr(0, SequenceLength(text));
        const bool plain = !sequence.empty() && !IsControl(sequence);
        shown += plain ? sequence : "?";
        text.remove_prefix(std::max<std::size_t>(1, sequence.size()));
    }
    return shown;
}

std::string ScopedName(const ChangedPlace& place) {
    return place.scope.empty() || place.name.empty() ? place.scope + place.name
                                                     : place.scope + "." + place.name;
}

std::string LinesOf(const ChangedPlace& place) {
    if (place.line == 0) return "";
    const std::string first = ":" + std::to_string(place.line);
    return place.line == place.endLine ? first : first + "-" + std::to_string(place.endLine);
}

// What of the old state is not to be seen in the new one.
std::string Before(const ChangedPlace& old, const ChangedPlace& now) {
    std::string before;
    if (ScopedName(old) != ScopedName(now)) before = ScopedName(old);
    const bool moved = old.file != now.file;
    if (!moved && LinesOf(old) == LinesOf(now)) return before;
    before.append(before.empty() ? "" : " ").append(moved ? old.file : "");
    return before.append(LinesOf(old));
}

const char* ColourOf(ChangeKind kind) {
    constexpr std::array<const char*, 6> kCodes{"32", "31", "33", "36", "35", "35"};
    return kCodes[static_cast<std::size_t>(kind)];
}

void Paint(std::string_view piece, const char* code, bool colour, std::string& out) {
    if (colour) out.append("\x1B[").append(code).append("m");
    out += piece;
    if (colour) out += "\x1B[0m";
}

std::string Padded(std::string_view word, std::size_t width) {
    std::string padded(word);
    padded.resize(std::max(width, word.size()), ' ');
    return padded;
}

}  // namespace

void AppendDiffRow(const Change& change, std::string& out) {
    const ChangedPlace& shown = ShownPlace(change);
    out.append("{\"change\":\"").append(NameOf(change.kind));
    out.append("\",\"declares\":\"").append(change.declares);
    out.append("\",\"scope\":").append(JsonString(shown.scope));
    out.append(",\"name\":").append(JsonString(shown.name));
    AppendPlace(change.now, {",\"file\":", ",\"line\":", ",\"endLine\":"}, out);
    AppendPlace(change.old, {",\"oldFile\":", ",\"oldLine\":", ",\"oldEndLine\":"}, out);
    out += "}\n";
}

void AppendDiffLine(const Change& change, bool colour, std::string& out) {
    constexpr std::size_t kLongestChange = 9;
    constexpr std::size_t kUsualDeclares = 11;
    const ChangedPlace& shown = ShownPlace(change);
    const std::string name = Shown(ScopedName(shown));
    Paint(Padded(NameOf(change.kind), kLongestChange), ColourOf(change.kind), colour, out);
    out.append("  ").append(Padded(change.declares, kUsualDeclares)).append("  ");
    if (!name.empty()) out.append(name).append("  ");
    Paint(Shown(shown.file) + LinesOf(shown), "2", colour, out);
    if (change.old && change.now) {
        const std::string before = Shown(Before(*change.old, *change.now));
        if (!before.empty()) Paint("  (was " + before + ")", "2", colour, out);
    }
    out += '\n';
}

}  // namespace plugincs
