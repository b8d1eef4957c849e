#include "parsecs/manual/Manual.h"

#include <gtest/gtest.h>

#include "parsecs/command/OptionTable.h"

using namespace plugincs;

namespace {

bool Holds(const std::string& text, std::string_view piece) {
    return text.find(piece) != std::string::npos;
}

// Lines as the reader of each text takes them: a roff formatter, or a shell.
TEST(Manual, IsWrittenInEachLanguage) {
    const struct {
        std::string text;
        std::string_view piece;
    } rows[] = {
        {HelpText(), "\n  -o, --output FILE       Write to FILE, which is replaced when all"},
        {HelpText(), "\n      --color auto|always|never\n                          Colours in "},
        {HelpText(), "\n  3                       Some output could not be written.\n"},
        {ManPage(), "\n.TP\n\\fB\\-j\\fR, \\fB\\-\\-jobs\\fR \\fIN\\fR\n\\&Parse with N thre"},
        {ManPage(), "\n\\fBparsecs \\-\\-jsonl src | grep \\(aq\"kind\":\"class\"\\(aq\\fR\n"},
        {ManPage(), "\n.TP\n\\fB3\\fR\n\\&Some output could not be written.\n"},
        {Completion("bash"), "\n        --output|-o) COMPREPLY=($(compgen -f --"},
        {Completion("zsh"),
         "\n    '--html=[A map to look at and to search\\: FILE is one page for"},
        {Completion("zsh"), " for a browser.]:value:_files' \\\n"},
        {Completion("zsh"), ":value:(auto always never)' \\\n    '--link=[With"},
        {Completion("zsh"), "\n    '-h[Show this help.]' \\\n    '--version["},
        {Completion("fish"), "\ncomplete -c parsecs -l output -s o -r -F -d 'Write to FILE, which"},
        {Completion("fish"), " -l into -x -a '(__fish_complete_directories)' -d 'Write a file for"},
        {Completion("fish"), " -l color -x -a 'auto always never' -d 'Colours"},
        {Completion("fish"), " -l jobs -s j -x -d '"},
    };
    for (const auto& [text, piece] : rows) EXPECT_TRUE(Holds(text, piece)) << piece << text;
}

TEST(Manual, ShowsTheSameOptionsEverywhere) {
    for (const OptionGroup& group : OptionGroups()) {
        for (const Option& option : group.options) {
            const bool shown = !option.help.empty();
            const std::string name(option.name);
            std::string typeset = name;
            if (name.find('-') != std::string::npos) typeset.insert(name.find('-'), "\\");
            EXPECT_EQ(Holds(HelpText(), " --" + name), shown) << name;
            EXPECT_EQ(Holds(ManPage(), "\\fB\\-\\-" + typeset + "\\fR"), shown) << name;
            EXPECT_EQ(Holds(Completion("bash"), "--" + name), shown) << name;
            EXPECT_EQ(Holds(Completion("zsh"), "'--" + name), shown) << name;
            EXPECT_EQ(Holds(Completion("fish"), " -l " + name + " "), shown) << name;
            // A quote would end the shells' strings.
            EXPECT_EQ(option.help.find('\''), std::string_view::npos) << name;
        }
    }
}

}  // namespace
