#include "parsecs/command/OptionTable.h"
#include "parsecs/manual/Manual.h"
#include "parsecs/manual/Prose.h"

namespace plugincs {

namespace {

// As roff prints it and takes it for nothing else; hyphens and quotes
// would be typeset as such.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '-' || c == '\\' || c == '\'') escaped += '\\';
        escaped += c == '\\' ? "e" : c == '\'' ? "(aq" : std::string(1, c);
    }
    return escaped;
}

// A line of text that is never taken for a request, whatever it begins with.
std::string Line(std::string_view text) { return "\\&" + Escaped(text) + '\n'; }

std::string Bold(std::string_view text) { return "\\fB" + Escaped(text) + "\\fR"; }

std::string Head(const Option& option) {
    std::string head;
    if (option.letter != 0) head = Bold(std::string("-") + option.letter) + ", ";
    head += Bold(std::string("--").append(option.name));
    if (!option.argument.empty()) head += " \\fI" + Escaped(option.argument) + "\\fR";
    return head;
}

std::string OptionSections() {
    std::string text = ".SH OPTIONS\n";
    for (const OptionGroup& group : OptionGroups()) {
        text.append(".SS ").append(group.title).append("\n");
        for (const Option& option : group.options) {
            if (option.help.empty()) continue;
            text.append(".TP\n").append(Head(option)).append("\n").append(Line(option.help));
        }
    }
    return text;
}

}  // namespace

std::string ManPage() {
    std::string page = ".TH PARSECS 1\n.SH NAME\nparsecs \\- shows the structure of source files\n";
    page += ".SH SYNOPSIS\n" + Bold("parsecs") +
            " [\\fIOPTION\\fR]... \\fIFILE\\fR|\\fIFOLDER\\fR|\\-...\n.br\n" +
            Bold("parsecs --diff") + " [\\fIOPTION\\fR]... \\fIOLD NEW\\fR\n.br\n" +
            Bold("parsecs --diff --git") + " [\\fIOPTION\\fR]... [\\fIOLD\\fR [\\fINEW\\fR]]\n";
    page += ".SH DESCRIPTION\n" + Line(kSummary);
    for (const std::string_view paragraph : kParagraphs) page += ".PP\n" + Line(paragraph);
    page += OptionSections();
    page += ".SH EXAMPLES\n";
    for (const Example& example : kExamples) {
        page += ".TP\n" + Bold(example.command) + '\n' + Line(example.shows);
    }
    page += ".SH EXIT STATUS\n";
    for (const ExitCodeMeaning& code : kExitCodes) {
        page += ".TP\n" + Bold(code.code) + '\n' + Line(code.meaning);
    }
    return page;
}

}  // namespace plugincs
