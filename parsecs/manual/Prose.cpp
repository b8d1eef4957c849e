#include "parsecs/manual/Prose.h"

namespace plugincs {

namespace {

const Example kExampleRows[] = {
    {"parsecs Program.cs", "the parser's records, byte for byte"},
    {"parsecs --strict Program.cs | jq .", "the same as valid JSON"},
    {"parsecs --jsonl src | grep '\"kind\":\"class\"'", "rows of all *.cs files below src"},
    {"parsecs --outline src | less", "trees for reading"},
    {"parsecs --outline --declarations src", "what the files declare, without bodies"},
    {"parsecs --outline --max-bytes 100000 src", "as much of that as fits"},
    {"parsecs --tags tags src", "tags for Vim and others: :tag Name"},
    {"parsecs --db src.db src", "a database of all of them, or what has changed"},
    {"parsecs --html map.html src", "a map of a code base for a browser"},
    {"parsecs --jsonl --exclude '*.g.cs' --exclude Tests/ src", "without what GLOBs fit"},
    {"parsecs --diff old new", "what has changed between two folders"},
    {"parsecs --diff --git v1 v2", "the same between two revisions"},
    {"parsecs --strict --into out src", "a JSON file below out for each"},
    {"git ls-files -z '*.cs' | parsecs -0 --files-from - --jsonl", "what git knows"},
};

const std::string_view kParagraphRows[] = {
    "A folder stands for the regular files named *.cs at any depth below it, but for those that "
    "are "
    "left out (see --exclude and --no-ignore); links to folders are not followed there. Other "
    "files are taken by their names, a file that is named twice once. "
    "Files are parsed in several threads. One that is too large for the memory is given up, and "
    "the others go on.",
    "A diff tells of each declaration that was added, removed, moved or renamed, or has another "
    "signature or body. White space, comments and the order of members are no change. Of two "
    "folders files are matched by their paths below each. With --git it takes what git diff takes: "
    "two revisions, one against the work tree, or none for HEAD against the work tree.",
    "Without -o or --into the output goes to standard output. A file appears whole or not at all: "
    "it is written under a name of its own and put in place by renaming, with the mode of the old "
    "one, and where a symbolic link leads to. What lies outside of the folder that you are in has "
    "no place below DIR.",
    "Files that could not be read, were given up, or stopped early because their braces do not "
    "match are named on standard error. The counts follow, but for one file that goes to one "
    "output.",
};

const ExitCodeMeaning kExitCodeRows[] = {
    {"0", "All files were parsed and written; those that stopped early are named."},
    {"1", "Some file could not be read or was given up; all others were written."},
    {"2", "The command line could not be followed; nothing was done."},
    {"3", "Some output could not be written."},
    {"--diff", "0 when nothing has changed, 1 when something has, 3 for unread files too."},
    {"128 + N", "Ended by signal N: 130 for Ctrl-C, 141 when the reader of a pipe left."},
};

}  // namespace

const std::string_view kSummary = "Shows the statements and blocks of C#-like source files.";
const std::span<const std::string_view> kParagraphs = kParagraphRows;
const std::span<const Example> kExamples = kExampleRows;
const std::span<const ExitCodeMeaning> kExitCodes = kExitCodeRows;

}  // namespace plugincs
