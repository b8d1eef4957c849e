#include <algorithm>
#include <utility>

#include "parsecs/command/OptionTable.h"
#include "parsecs/manual/Manual.h"
#include "parsecs/manual/Prose.h"

namespace plugincs {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kIndent = 26;

// Appends the words in lines that begin at the column `kIndent`; the head stands before them, or
// above them when it is long.
void AppendWrapped(std::string line, std::string_view words, std::string& out) {
    if (line.size() >= kIndent) out.append(std::exchange(line, {})).append("\n");
    line.resize(kIndent - 1, ' ');
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        if (line.size() + 1 + word.size() > kWidth) {
            out.append(std::exchange(line, std::string(kIndent - 1, ' '))).append("\n");
        }
        line.append(" ").append(word);
    }
    out.append(line).append("\n");
}

std::string OptionHead(const Option& option) {
    std::string head = option.letter == 0 ? "      " : std::string("  -") + option.letter + ", ";
    head.append("--").append(option.name);
    if (!option.argument.empty()) head.append(" ").append(option.argument);
    return head;
}

}  // namespace

std::string HelpText() {
    std::string help =
        "Usage: parsecs [OPTION]... FILE|FOLDER|-...\n"
        "       parsecs --diff [OPTION]... OLD NEW\n"
        "       parsecs --diff --git [OPTION]... [OLD [NEW]]\n";
    help.append(kSummary).append("\n");
    for (const OptionGroup& group : OptionGroups()) {
        help.append("\n").append(group.title).append(":\n");
        for (const Option& option : group.options) {
            if (!option.help.empty()) AppendWrapped(OptionHead(option), option.help, help);
        }
    }
    help += "\nExamples:\n";
    for (const Example& example : kExamples) {
        help.append("  ").append(example.command).append("\n");
        help.append("      ").append(example.shows).append("\n");
    }
    help += "\nExit codes:\n";
    for (const ExitCodeMeaning& code : kExitCodes) {
        AppendWrapped(std::string("  ").append(code.code), code.meaning, help);
    }
    return help;
}

}  // namespace plugincs
