// What the manual says beside the options.
#pragma once

#include <span>
#include <string_view>

namespace plugincs {

struct Example {
    std::string_view command;
    std::string_view shows;
};

struct ExitCodeMeaning {
    std::string_view code;
    std::string_view meaning;
};

extern const std::string_view kSummary;
extern const std::span<const std::string_view> kParagraphs;  ///< For who wants to know more.
extern const std::span<const Example> kExamples;
extern const std::span<const ExitCodeMeaning> kExitCodes;

}  // namespace plugincs
