#include "analysis/FunctionName.h"

#include "text/StringHelpers.h"

std::string functionName(std::string_view text) {
    // The text before the parameter list, without a generic return type and pointer stars.
    std::string_view header = text.substr(0, text.find('('));
    header = header.substr(header.find('>') + 1);  // the whole header where there is none
    std::string_view name = trim(header);
    std::string edited;
    if (Contains(name, "*") || !IsReduced(name)) {
        edited = name;
        replaceAll(edited, "*", "");
        name = TrimAndReduceInPlace(edited);
    }

    // The last word with its blank, or from its last dot on: the dot stays.
    const std::size_t blank = name.rfind(' ');
    if (blank != std::string_view::npos) {
        name = name.substr(blank);
        const std::size_t dot = name.rfind('.');
        if (dot != std::string_view::npos) name = name.substr(dot);
    }

    // Without the function's own generic parameters.
    name = name.substr(0, name.find('<'));
    return std::string(trim(name));
}
