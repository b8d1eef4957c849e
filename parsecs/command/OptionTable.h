// All options in one place, those of the forms among them: the command line, the help, the man page
// and the completions of the shells are made from these rows.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/options/Options.h"

namespace plugincs {

struct Option {
    char letter;  ///< 0: none
    std::string_view name;
    std::string_view argument;  ///< Empty: takes none. Choices are parted by '|'.
    std::string_view help;      ///< Empty: not shown.
    std::function<void(Options& options, const std::string& argument)>
        apply;  ///< Throws UsageError.
};

struct OptionGroup {
    std::string_view title;
    std::vector<Option> options;
};

/// In the order of the help. Valid as long as the program runs.
const std::vector<OptionGroup>& OptionGroups();

/// The option of that long name or letter, null without one.
const Option* FindOption(std::string_view name);
const Option* FindOption(char letter);

}  // namespace plugincs
