#include "text/StringHelpers.h"

#include <gtest/gtest.h>

#include "tests/support/FinderChecks.h"

using namespace plugincs;

namespace {

using std::string_literals::operator""s;
using Function = std::string (*)(std::string);

std::string Trim(std::string text) { return std::string(trim(text)); }
std::string Convert(std::string text) { return ConvertWhiteSpacesToSingleSpace(text); }
std::string Reduce(std::string text) { return TrimAndReduce(text); }
std::string First(std::string text) { return std::string(FirstWord(text)); }
std::string Last(std::string text) { return std::string(LastWord(text)); }
std::string Name(std::string text) { return std::string(FileName(text)); }
std::string NameWithExtension(std::string text) { return std::string(FileNameWithExtension(text)); }
std::string Escape(std::string text) { return EscapeString(text) == text ? text : "not stored"; }
std::string NoDots(std::string text) { return LastWordNoDots(text) == text ? text : "not stored"; }

struct Row {
    const char* name;
    Function function;
    std::string text;
    std::string result;
};

const Row kRows[] = {
    {"trim", Trim, " \t\r\n\f\v", ""},
    {"trim", Trim, "\fa b\v", "a b"},
    {"Convert", Convert, "  a\t\tb\n", " a b "},
    {"Convert", Convert, "a\f\fb\n", "a\f\fb "},
    {"TrimAndReduce", Reduce, "  int   x =\n 5 ; ", "int x = 5 ;"},
    {"TrimAndReduce", Reduce, "\n\f \va \r\nb\f\n", "a b"},
    {"FirstWord", First, "if(x)", "if"},
    {"FirstWord", First, "#include <x>", "#include"},
    {"FirstWord", First, "a_9\xC3\xA9", "a_9"},
    {"LastWord", Last, "public class Foo", "public class"},
    {"LastWord", Last, "a\tb", "a\tb"},
    {"LastWord", Last, " a", ""},
    {"LastWordNoDots", NoDots, "public class Foo : Base", "Foo"},
    {"LastWordNoDots", NoDots, "class Foo: Base", "Fo"},
    {"LastWordNoDots", NoDots, "Foo ", "Foo "},
    {"LastWordNoDots", NoDots, ":x", ":x"},
    {"LastWordNoDots", NoDots, "a:b", ""},
    {"EscapeString", Escape, "\"'\\\n\xFF\0x"s, "\\\"\\'\\\\\n\xFF\0x"s},
    {"FileName", Name, "/a/b/c.tar.gz", "c.tar"},
    {"FileName", Name, "C:\\dir\\y.cs", "y"},
    {"FileName", Name, "/a.b/c", "c"},
    {"FileName", Name, ".hidden", ""},
    {"FileNameWithExtension", NameWithExtension, "dir/", ""},
};

TEST(StringHelpers, GiveTheirResults) {
    for (const Row& row : kRows) {
        EXPECT_EQ(row.function(row.text), row.result) << row.name << " of \"" << row.text << '"';
    }
    for (std::size_t size = 1; size < 140; ++size) {  // where a text is cut into blocks
        const std::string word(size, 'x');
        EXPECT_EQ(TrimAndReduce(word + "  y \n" + word), word + " y " + word);
        EXPECT_EQ(Escape(word + "'" + word + "\\"), word + "\\'" + word + "\\\\");
    }
}

TEST(StringHelpers, ReplaceAllNeverSearchesWhatItInserted) {
    const std::string rows[][4] = {{"aa", "", "x", "aa"},
                                   {"aa", "a", "aa", "aaaa"},
                                   {"aaa", "aa", "b", "ba"},
                                   {"\ta\t", "\t", " ", " a "},
                                   {"*a**b", "*", "", "ab"}};
    for (const auto& row : rows) {
        std::string text = row[0];
        replaceAll(text, row[1], row[2]);
        EXPECT_EQ(text, row[3]) << row[0];
    }
}

TEST(StringHelpers, SearchesSeeQuotesAndBrackets) {
    const std::pair<const char*, bool> rows[] = {
        {"a==b", true},   {"f(a==b)", false},  {"\"==\"", false},
        {"}a==b", false}, {"a=b", false},      {"x => y == z", false},
        {"[a==b]", true}, {"'\"'==\"", false}, {"f(a) == <b>", true},
    };
    for (const auto& [text, found] : rows) {
        EXPECT_EQ(OutsideStringMatch(text, "=="), found) << text;
    }
    EXPECT_FALSE(OutsideStringMatch("a(b", "("));
    EXPECT_TRUE(ContainsWord("subbbclass", "bbclass"));
    EXPECT_EQ(IndexOf("abc", ""), 0);
    EXPECT_EQ(IndexOf("abc", "d"), -1);
    EXPECT_FALSE(BothAreSpaces(' ', '\t'));
}

TEST(StringHelpers, AllWaysFindTheSameBytes) {
    std::string bytes;
    for (int c = 0; c < 256; ++c) bytes += static_cast<char>(c);
    EXPECT_EQ(BrokenByFinders(bytes + std::string(bytes.rbegin(), bytes.rend())), "");
}

}  // namespace
