#include <algorithm>

#include "parsecs/command/OptionTable.h"
#include "parsecs/manual/Manual.h"

namespace plugincs {

namespace {

bool IsChoice(const Option& option) { return option.argument.find('|') != std::string_view::npos; }

std::string Choices(const Option& option) {
    std::string choices(option.argument);
    std::replace(choices.begin(), choices.end(), '|', ' ');
    return choices;
}

// Within single quotes in all three shells: no help has one, and zsh gives colons and brackets a
// meaning of their own.
std::string Quoted(std::string_view text) {
    std::string quoted;
    for (const char c : text) {
        if (c == ':' || c == '[' || c == ']') quoted += '\\';
        quoted += c;
    }
    return quoted;
}

template <typename AppendOption>
void ForEachShown(AppendOption append) {
    for (const OptionGroup& group : OptionGroups()) {
        for (const Option& option : group.options) {
            if (!option.help.empty()) append(option, std::string(option.name));
        }
    }
}

std::string Bash() {
    std::string names;
    std::string values;
    ForEachShown([&](const Option& option, const std::string& name) {
        names += " --" + name;
        const std::string letter = option.letter == 0 ? "" : std::string("|-") + option.letter;
        std::string action;
        if (IsChoice(option)) action = "-W \"" + Choices(option) + '"';
        if (option.argument == "FILE") action = "-f";
        if (option.argument == "DIR") action = "-d";
        if (action.empty()) return;
        values += "        --" + name + letter + ") COMPREPLY=($(compgen " + action +
                  " -- \"$word\")); return ;;\n";
    });
    return "_parsecs() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    [ \"$word\" != = ] || word=\n"
           "    [ \"$before\" != = ] || before=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "    COMPREPLY=()\n"
           "    case $before in\n" +
           values +
           "    esac\n"
           "    case $word in\n"
           "        -*) COMPREPLY=($(compgen -W \"" +
           names.substr(1) +
           "\" -- \"$word\")) ;;\n"
           "    esac\n"
           "}\n"
           "complete -o filenames -o default -F _parsecs parsecs\n";
}

std::string Zsh() {
    std::string text = "#compdef parsecs\n_arguments -s \\\n";
    ForEachShown([&](const Option& option, const std::string& name) {
        std::string value;
        if (!option.argument.empty()) value = ":value:";
        if (IsChoice(option)) value += '(' + Choices(option) + ')';
        if (option.argument == "FILE") value += "_files";
        if (option.argument == "DIR") value += "_directories";
        const std::string help = '[' + Quoted(option.help) + ']';
        const std::string equals = option.argument.empty() ? "" : "=";
        text += "    '--" + name + equals + help + value + "' \\\n";
        if (option.letter == 0) return;
        text += std::string("    '-") + option.letter + help + value + "' \\\n";
    });
    return text + "    '*:file:_files'\n";
}

std::string Fish() {
    std::string text;
    ForEachShown([&](const Option& option, const std::string& name) {
        text += "complete -c parsecs -l " + name;
        if (option.letter != 0) text += std::string(" -s ") + option.letter;
        if (IsChoice(option)) text += " -x -a '" + Choices(option) + '\'';
        if (option.argument == "FILE") text += " -r -F";
        if (option.argument == "DIR") text += " -x -a '(__fish_complete_directories)'";
        if (option.argument == "N") text += " -x";
        text.append(" -d '").append(option.help).append("'\n");
    });
    return text;
}

}  // namespace

std::string Completion(const std::string& shell) {
    return shell == "bash" ? Bash() : shell == "zsh" ? Zsh() : Fish();
}

}  // namespace plugincs
