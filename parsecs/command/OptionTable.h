// All options in one place: the command line, the help, the man page and the completions of the
// shells are made from these rows.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "parsecs/command/Options.h"

struct Option {
    char letter;  ///< 0: none
    std::string_view name;
    std::string_view argument;  ///< Empty: takes none. Choices are parted by '|'.
    std::string_view help;      ///< Empty: not shown.
    void (*apply)(Options& options, const std::string& argument);  ///< Throws UsageError.
};

struct OptionGroup {
    std::string_view title;
    std::span<const Option> options;
};

struct Example {
    std::string_view command;
    std::string_view shows;
};

struct ExitCode {
    std::string_view code;
    std::string_view meaning;
};

enum { kDone = 0, kSomeFailed = 1, kUsage = 2, kNotWritten = 3 };

extern const std::string_view kSummary;
extern const std::span<const std::string_view> kParagraphs;  ///< For who wants to know more.
extern const std::span<const OptionGroup> kOptionGroups;
extern const std::span<const Example> kExamples;
extern const std::span<const ExitCode> kExitCodes;

/// The option of that long name or letter, null without one.
const Option* FindOption(std::string_view name);
const Option* FindOption(char letter);
