#include "parsecs/command/CommandLine.h"

#include <gtest/gtest.h>

#include "parsecs/form/FormKind.h"

using namespace plugincs;

namespace {

using Arguments = std::vector<const char*>;

Options Read(Arguments arguments) {
    arguments.insert(arguments.begin(), "parsecs");
    return ReadCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

// Why they cannot be followed.
std::string Refused(const Arguments& arguments) {
    try {
        Read(arguments);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "followed";
}

TEST(CommandLine, SaysWhatIsWrong) {
    const struct {
        Arguments arguments;
        const char* message;
    } rows[] = {
        {{"--vrsn"}, "no option --vrsn: did you mean --version?"},
        {{"--jsnol=x"}, "no option --jsnol: did you mean --jsonl?"},
        {{"--strict-json"}, "no option --strict-json: did you mean --strict?"},
        {{"--decl"}, "no option --decl: did you mean --declarations?"},
        {{"--ignore=x"}, "no option --ignore: did you mean --exclude?"},
        {{"--colour=x"}, "no option --colour: did you mean --color?"},
        {{"--foo"}, "no option --foo, see parsecs --help"},
        {{"--gags"}, "no option --gags: did you mean --tags?"},
        {{"--logs"}, "no option --logs, see parsecs --help"},
        {{"--xh"}, "no option --xh, see parsecs --help"},
        {{"--qqqq"}, "no option --qqqq, see parsecs --help"},
        {{"--xx"}, "no option --xx, see parsecs --help"},  // nothing is left of --db
        {{"--man-pag"}, "no option --man-pag, see parsecs --help"},
        {{"--="}, "no option --, see parsecs --help"},
        {{"-0x"}, "no option -x, see parsecs --help"},
        {{"--output="}, "--output needs a value that is not empty"},
        {{"--into", ""}, "--into needs a value that is not empty"},
        {{"-0o"}, "-o needs a value: FILE"},
        {{"--color=alw"}, "--color takes auto|always|never, not alw"},
        {{"--color=auto|always"}, "--color takes auto|always|never, not auto|always"},
        {{"--completion", "sh"}, "--completion takes bash|zsh|fish, not sh"},
        {{"-j1001"}, "--jobs takes a number from 1 to 1000, not 1001"},
        {{"-j2x"}, "--jobs takes a number from 1 to 1000, not 2x"},
        {{"-j-1"}, "--jobs takes a number from 1 to 1000, not -1"},
        {{"-j", "5000000000"}, "--jobs takes a number from 1 to 1000, not 5000000000"},
        {{"--max-bytes=99"}, "--max-bytes takes a number from 100 on, not 99"},
        {{"--max-bytes=100k"}, "--max-bytes takes a number from 100 on, not 100k"},
        {{"--db", "a", "--html=b"}, "--html and --db are two forms: use one"},
        {{"--db", "-"}, "--db needs a file: it cannot go to standard output"},
    };
    for (const auto& [arguments, message] : rows) EXPECT_EQ(Refused(arguments), message);
}

std::string Described(const Options& options) {
    std::string text(options.form->option);
    for (const std::string& piece :
         {options.formFile, options.list, options.output, options.folder}) {
        text.append("|").append(piece);
    }
    text.append(options.listEndsInNul ? "|0" : "|").append(options.traces ? "|t" : "|");
    text.append("|").append(std::to_string(options.jobs));
    for (const std::string& input : options.inputs) text.append("|").append(input);
    return text;
}

TEST(CommandLine, TakesValuesAndInputs) {
    const struct {
        Arguments arguments;
        const char* options;
    } rows[] = {
        {{"a", "--traces", "-", "-j1000"}, "||||||t|1000|a|-"},
        {{"--strict", "a", "--strict"}, "strict|||||||0|a"},
        {{"--jsonl", "--", "-x", "--strict", "--"}, "jsonl|||||||0|-x|--strict|--"},
        {{"-0j3", "-oa", "--files-from=l"}, "||l|a||0||3"},
        {{"-o", "--strict", "--into=a=b"}, "|||--strict|a=b|||0"},
        {{"--html", "-", "a"}, "html|-||||||0|a"},
        {{"--db=d", "-o", "a", "-ob"}, "db|d||b||||0"},
    };
    for (const auto& [arguments, options] : rows) EXPECT_EQ(Described(Read(arguments)), options);
}

}  // namespace
