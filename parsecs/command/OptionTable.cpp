#include "parsecs/command/OptionTable.h"

#include <charconv>
#include <cstdint>

#include "parsecs/forms/FormTable.h"

namespace plugincs {

namespace {

std::string NameOf(const FormKind& kind) { return std::string("--").append(kind.option); }

void ChooseForm(Options& options, const FormKind& kind, const std::string& value) {
    const bool chosen = !options.form->option.empty();
    if (chosen && options.form != &kind) {
        throw UsageError(NameOf(kind) + " and " + NameOf(*options.form) +
                         " are two forms: use one");
    }
    if (value == kStandardStream && !kind.streams) {
        throw UsageError(NameOf(kind) + " needs a file: it cannot go to standard output");
    }
    options.form = &kind;
    options.formFile = value;
}

// Whether all of the text is a number from `least` to `most`.
template <typename Number>
bool ReadNumber(const std::string& text, Number least, Number most, Number& number) {
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end && number >= least && number <= most;
}

void SetJobs(Options& options, const std::string& number) {
    if (ReadNumber(number, 1U, 1000U, options.jobs)) return;
    throw UsageError("--jobs takes a number from 1 to 1000, not " + number);
}

// Fewer have no room for the line that says how much is left out.
void SetMostBytes(Options& options, const std::string& number) {
    constexpr std::size_t kLeast = 100;
    if (ReadNumber(number, kLeast, SIZE_MAX, options.mostBytes)) return;
    throw UsageError("--max-bytes takes a number from 100 on, not " + number);
}

void SetColour(Options& options, const std::string& when) {
    if (when == "auto") options.colour = Options::Colour::Auto;
    if (when == "always") options.colour = Options::Colour::Always;
    if (when == "never") options.colour = Options::Colour::Never;
}

std::vector<Option> FormOptions() {
    std::vector<Option> options;
    for (const FormKind* const kind : kFormKinds) {
        if (kind->option.empty()) continue;
        options.push_back(
            {0, kind->option, kind->argument, kind->help,
             [kind](Options& o, const std::string& value) { ChooseForm(o, *kind, value); }});
    }
    return options;
}

std::vector<Option> OutlineOptions() {
    return {
        {0, "declarations", "",
         "Only what declares something, types before members, without bodies and attributes.",
         [](Options& o, const std::string&) { o.declarations = true; }},
        {0, "max-bytes", "N",
         "Declarations of all inputs in at most N bytes: private members are left out first, then "
         "other members, then types, of the largest files first. Marks say how much.",
         SetMostBytes},
    };
}

std::vector<Option> PlaceOptions() {
    return {
        {'o', "output", "FILE", "Write to FILE, which is replaced when all is done.",
         [](Options& o, const std::string& value) { o.output = value; }},
        {0, "into", "DIR",
         "Write a file for each input below the folder DIR: src/a.cs gives "
         "DIR/src/a.cs.json (.jsonl, .txt).",
         [](Options& o, const std::string& value) { o.folder = value; }},
        {0, "files-from", "FILE",
         "Take the names of inputs from FILE, or from standard input for -, "
         "one a line.",
         [](Options& o, const std::string& value) { o.list = value; }},
        {'0', "null", "", "The names in that file end in NUL, not in a line feed.",
         [](Options& o, const std::string&) { o.listEndsInNul = true; }},
        {0, "exclude", "GLOB",
         "Leave out what GLOB fits, which is read as a line of a .gitignore where you are: "
         "*.g.cs, Generated/, /src/old, !kept.cs. May be given several times.",
         [](Options& o, const std::string& value) { o.excluded.push_back(value); }},
        {0, "no-ignore", "",
         "Do not follow .gitignore files. Otherwise those in folders are, and those above them in "
         "the same repository. bin/, obj/, .git/ and node_modules/ are left out of folders in any "
         "case, unless they are inputs themselves or a pattern says !bin/.",
         [](Options& o, const std::string&) { o.ignoreFiles = false; }},
    };
}

std::vector<Option> DiffOptions() {
    return {
        {0, "diff", "",
         "Compare two states, OLD and NEW, two files or two folders: a line for each declaration "
         "that was added, removed, moved or renamed, or whose signature or body changed; with "
         "--jsonl a row.",
         [](Options& o, const std::string&) { o.diff = true; }},
        {0, "git", "",
         "The states are revisions of the repository that you stand in: two, one against the work "
         "tree, or none for HEAD against the work tree.",
         [](Options& o, const std::string&) { o.git = true; }},
    };
}

std::vector<Option> OtherOptions() {
    return {
        {'j', "jobs", "N",
         "Parse with N threads, one for each core by default. The output is the same.", SetJobs},
        {0, "color", "auto|always|never",
         "Colours in outlines and diffs: on a terminal by default, unless "
         "NO_COLOR is set.",
         SetColour},
        {0, "link", "TEMPLATE",
         "With --html: what opens a place in an editor or on a page, an address with {path}, "
         "{line} "
         "and {column} in it.",
         [](Options& o, const std::string& value) { o.link = value; }},
        {0, "traces", "",
         "Show on standard error what the parser says of itself, and parse with one thread.",
         [](Options& o, const std::string&) { o.traces = true; }},
        {'h', "help", "", "Show this help.",
         [](Options& o, const std::string&) { o.about = Options::About::Help; }},
        {0, "version", "", "Show the version.",
         [](Options& o, const std::string&) { o.about = Options::About::Version; }},
        {0, "schema", "", "Show the JSON Schema of the lines of --jsonl.",
         [](Options& o, const std::string&) { o.about = Options::About::Schema; }},
        {0, "man-page", "", "",
         [](Options& o, const std::string&) { o.about = Options::About::ManPage; }},
        {0, "completion", "bash|zsh|fish", "",
         [](Options& o, const std::string& value) {
             o.about = Options::About::Completion;
             o.shell = value;
         }},
    };
}

template <typename Matches>
const Option* FindFirst(Matches matches) {
    for (const OptionGroup& group : OptionGroups()) {
        for (const Option& option : group.options) {
            if (matches(option)) return &option;
        }
    }
    return nullptr;
}

}  // namespace

const std::vector<OptionGroup>& OptionGroups() {
    static const std::vector<OptionGroup> kGroups{
        {"Forms of output (the parser's own records by default)", FormOptions()},
        {"Outlines", OutlineOptions()},
        {"What has changed", DiffOptions()},
        {"Inputs and outputs", PlaceOptions()},
        {"Others", OtherOptions()},
    };
    return kGroups;
}

const Option* FindOption(std::string_view name) {
    return FindFirst([name](const Option& option) { return option.name == name; });
}

const Option* FindOption(char letter) {
    return FindFirst([letter](const Option& option) { return option.letter == letter; });
}

}  // namespace plugincs
