#include "parsecs/forms/map/Link.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "parsecs/options/Options.h"

namespace plugincs {

namespace {

constexpr std::string_view kPath = "{path}";
constexpr std::array<std::string_view, 3> kNames{kPath, "{line}", "{column}"};
// Their addresses are programs or documents of their own, which a browser may run.
constexpr std::array<std::string_view, 4> kRefused{"javascript", "vbscript", "data", "blob"};

bool IsLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

bool IsInScheme(char c) {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

// In lower case; empty without one. Nothing may stand before it: a browser would skip it.
std::string SchemeOf(std::string_view link) {
    const std::string_view scheme = link.substr(0, link.find(':'));
    if (scheme.size() == link.size() || scheme.empty() || !IsLetter(scheme.front())) return {};
    if (!std::all_of(scheme.begin(), scheme.end(), IsInScheme)) return {};
    std::string lower(scheme);
    for (char& c : lower) c = IsLetter(c) ? static_cast<char>(c | 0x20) : c;
    return lower;
}

void CheckScheme(const std::string& link) {
    const std::string scheme = SchemeOf(link);
    if (scheme.empty()) {
        throw UsageError("--link takes a whole address, such as https://HOST/{path}#L{line}, not " +
                         link);
    }
    if (std::find(kRefused.begin(), kRefused.end(), scheme) != kRefused.end()) {
        throw UsageError("--link takes no addresses that begin with " + scheme + ":");
    }
}

void CheckNames(const std::string& link) {
    if (link.find(kPath) == std::string::npos) throw UsageError("--link needs a {path}");
    for (std::size_t at = link.find('{'); at != std::string::npos; at = link.find('{', at + 1)) {
        const std::string name = link.substr(at, link.find('}', at) - at + 1);
        if (std::find(kNames.begin(), kNames.end(), name) != kNames.end()) continue;
        throw UsageError("--link knows {path}, {line} and {column}, not " + name);
    }
}

}  // namespace

void CheckLink(const std::string& link) {
    CheckScheme(link);
    CheckNames(link);
}

}  // namespace plugincs
