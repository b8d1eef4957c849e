#include "parsecs/command/OptionTable.h"

#include <charconv>

namespace {

void ChooseForm(Options& options, Options::Form form, const std::string& option) {
    if (!options.formOption.empty() && options.formOption != option) {
        throw UsageError(option + " and " + options.formOption + " are two forms: use one");
    }
    options.form = form;
    options.formOption = option;
}

void SetJobs(Options& options, const std::string& number) {
    const char* const end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, options.jobs);
    constexpr unsigned kMostJobs = 1000;
    const bool valid = read.ec == std::errc() && read.ptr == end;
    if (valid && options.jobs >= 1 && options.jobs <= kMostJobs) return;
    throw UsageError("--jobs takes a number from 1 to 1000, not " + number);
}

void SetColour(Options& options, const std::string& when) {
    if (when == "auto") options.colour = Options::Colour::Auto;
    if (when == "always") options.colour = Options::Colour::Always;
    if (when == "never") options.colour = Options::Colour::Never;
}

const Option kForms[] = {
    {0, "strict", "",
     "The records as valid JSON. Like the records themselves one array for one "
     "file: for more use --into.",
     [](Options& o, const std::string&) { ChooseForm(o, Options::Form::Strict, "--strict"); }},
    {0, "jsonl", "", "JSON Lines, a row for each node, with its place in the file.",
     [](Options& o, const std::string&) { ChooseForm(o, Options::Form::Rows, "--jsonl"); }},
    {0, "outline", "", "A tree for reading, a line for each node.",
     [](Options& o, const std::string&) { ChooseForm(o, Options::Form::Outline, "--outline"); }},
    {0, "db", "FILE",
     "An SQLite database to ask questions of. An existing one is brought up to date.",
     [](Options& o, const std::string& value) {
         if (value == "-") throw UsageError("--db needs a file: a database cannot be streamed");
         ChooseForm(o, Options::Form::Index, "--db");
         o.formFile = value;
     }},
    {0, "html", "FILE", "A map to look at and to search: FILE is one page for a browser.",
     [](Options& o, const std::string& value) {
         ChooseForm(o, Options::Form::Map, "--html");
         o.formFile = value == "-" ? "/dev/stdout" : value;
     }},
};

const Option kPlaces[] = {
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
};

const Option kOthers[] = {
    {'j', "jobs", "N",
     "Parse with N threads, one for each core by default. The output is the same.", SetJobs},
    {0, "color", "auto|always|never",
     "Colours in outlines: on a terminal by default, unless "
     "NO_COLOR is set.",
     SetColour},
    {0, "traces", "",
     "Show on standard error what the parser says of itself, and parse with one thread.",
     [](Options& o, const std::string&) { o.traces = true; }},
    {'h', "help", "", "Show this help.",
     [](Options& o, const std::string&) { o.about = Options::About::Help; }},
    {0, "version", "", "Show the version.",
     [](Options& o, const std::string&) { o.about = Options::About::Version; }},
    {0, "man-page", "", "",
     [](Options& o, const std::string&) { o.about = Options::About::ManPage; }},
    {0, "completion", "bash|zsh|fish", "",
     [](Options& o, const std::string& value) {
         o.about = Options::About::Completion;
         o.shell = value;
     }},
};

const OptionGroup kGroups[] = {
    {"Forms of output (the parser's own records by default)", kForms},
    {"Inputs and outputs", kPlaces},
    {"Others", kOthers},
};

const Example kExampleRows[] = {
    {"parsecs Program.cs", "the parser's records, byte for byte"},
    {"parsecs --strict Program.cs | jq .", "the same as valid JSON"},
    {"parsecs --jsonl src | grep '\"kind\":\"class\"'", "rows of all *.cs files below src"},
    {"parsecs --outline src | less", "trees for reading"},
    {"parsecs --db src.db src", "a database of all of them, or what has changed"},
    {"parsecs --html map.html src", "a map of a code base for a browser"},
    {"parsecs --strict --into out src", "a JSON file below out for each"},
    {"git ls-files -z '*.cs' | parsecs -0 --files-from - --jsonl", "what git knows"},
};

const std::string_view kParagraphRows[] = {
    "A folder stands for the regular files named *.cs at any depth below it; links to folders are "
    "not followed there. Other files are taken by their names, a file that is named twice once. "
    "Files are parsed in several threads. One that is too large for the memory is given up, and "
    "the "
    "others go on.",
    "Without -o or --into the output goes to standard output. A file appears whole or not at all: "
    "it is written under a name of its own and put in place by renaming, with the mode of the old "
    "one, and where a symbolic link leads to. What lies outside of the folder that you are in has "
    "no place below DIR.",
    "Files that could not be read, were given up, or stopped early because their braces do not "
    "match are named on standard error. The counts follow, but for one file that goes to one "
    "output.",
};

const ExitCode kExitCodeRows[] = {
    {"0", "All files were parsed and written; those that stopped early are named."},
    {"1", "Some file could not be read or was given up; all others were written."},
    {"2", "The command line could not be followed; nothing was done."},
    {"3", "Some output could not be written."},
    {"128 + N", "Ended by signal N: 130 for Ctrl-C, 141 when the reader of a pipe left."},
};

}  // namespace

const std::string_view kSummary = "Shows the statements and blocks of C#-like source files.";
const std::span<const std::string_view> kParagraphs = kParagraphRows;
const std::span<const OptionGroup> kOptionGroups = kGroups;
const std::span<const Example> kExamples = kExampleRows;
const std::span<const ExitCode> kExitCodes = kExitCodeRows;

namespace {

template <typename Matches>
const Option* FindFirst(Matches matches) {
    for (const OptionGroup& group : kOptionGroups) {
        for (const Option& option : group.options) {
            if (matches(option)) return &option;
        }
    }
    return nullptr;
}

}  // namespace

const Option* FindOption(std::string_view name) {
    return FindFirst([name](const Option& option) { return option.name == name; });
}

const Option* FindOption(char letter) {
    return FindFirst([letter](const Option& option) { return option.letter == letter; });
}
