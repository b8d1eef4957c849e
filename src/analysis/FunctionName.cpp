#include "analysis/FunctionName.h"

#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

// The position of the last white space, or npos.
std::size_t BeforeLastWord(std::string_view text) {
    std::size_t at = text.size();
    while (at > 0 && !IsReducible(text[at - 1])) --at;
    return at - 1;
}

}  // namespace

std::string functionName(std::string_view text) {
    // The text before the parameter list, without a generic return type and pointer stars.
    std::string_view header = text.substr(0, text.find('('));
    header = header.substr(header.find('>') + 1);  // the whole header where there is none
    std::string_view name = trim(header);
    std::string edited;
    if (Contains(name, "*")) {
        edited = name;
        replaceAll(edited, "*", "");
        name = trim(edited);
    }

    // The last word with the white space before it, or from its last dot on: the dot stays.
    const std::size_t word = BeforeLastWord(name);
    if (word != std::string_view::npos) {
        name = name.substr(word);
        const std::size_t dot = name.rfind('.');
        if (dot != std::string_view::npos) name = name.substr(dot);
    }

    // Without the function's own generic parameters.
    name = name.substr(0, name.find('<'));
    return std::string(trim(name));
}

}  // namespace plugincs
