#include "cleaner/Cleaner.h"

#include <gtest/gtest.h>

using namespace plugincs;

namespace {

using Strings = std::vector<std::string>;

const std::pair<std::string, std::string> kCommentRows[] = {
    {"a // note\nb", "a \nb"},
    {"a /* 1\n2\n3 */ b//", "a \n\n b"},
    {"x \"// /* \\\" */\" y '\"' /**/z", "x \"// /* \\\" */\" y '\"' z"},
    // A banner or a doc comment leaves no asterisk; a line feed behind "/*" stays.
    {"a/** b **/c/*/ d */e/*\n*/f", "ace\nf"},
    {"a/* b /* c */ d", "a d"},
    // The byte after a comment is copied unexamined.
    {"a/**/\"b//c", "a\"b"},
    {"a/**///b\n\"", "a//b\n\""},
    {"a;/**/\n[b] c", "a;\n c"},
    {"a/", "a"},
    // Control bytes and bytes beyond ASCII become blanks everywhere; a backslash before one escapes
    // the byte after it.
    {"a\x7F\xC8 // b\x01\xC8 c\n'\\\x02'd'", "a     \n'\\ 'd'"},
    {"/*\x01*/a*/b", " a*/b"},
    // A run of five T skips to the next semicolon, in comments too, but not in a literal.
    {"x;TTTTTabc;y", "x;y"},
    {"TTTTTTx;y", "y"},
    {"aTTTTTb;y", "ay"},
    {"dxTTTTTabc;", "dxTTTTTabc;"},
    {"aTTTTT", "aTTTTT"},
    {"a//TTTTTb\nc;d\ne", "a\ne"},
    {"a/* TTTTTb*/c;d*/e", "ae"},
    {"'TTTTTx;'", "'TTTTTx;'"},
    {std::string(63, 'a') + "TTTTTb;c", std::string(63, 'a') + "c"},
    // Attributes are dropped at the start of a statement, which only other code ends.
    {"[Serializable]\npublic class A", "\npublic class A"},
    {"int[] a;[x] b", "int[] a; b"},
    {"a // ; [x\n] b", "a "},
    {"a;/* [*/]b*/c", "a;c"},
    {"b } [x] c;\n } [y] d", "b } [x] c;\n }  d"},
    {"s = \"a;[b]c\"", "s = \"a;c\""},
    {"a;[x; \"]\" b", "a;\" b"},
    {"a;\n// c\n[x] b", "a;\n\n b"},
    {"a // c\n[x] b", "a \n[x] b"},
    {"'a\n// b'c", "'a\n// b'c"},
    {"[never closed; a", ""},
};

TEST(Cleaner, StripsComments) {
    for (const auto& [text, stripped] : kCommentRows) {
        EXPECT_EQ(Cleaner().UncommentAndUnquoteText(text), stripped) << text;
    }
}

struct DirectiveRow {
    std::string text;
    std::string kept;
    Strings defines;
    Strings symbols = {};
};

const DirectiveRow kDirectiveRows[] = {
    {"#if DEBUG\na\n#else\nb\n#endif\nc", "\n\n\nb\n\nc", {"DEBUG"}},
    {"#ifndef X\na\n#endif", "\na\n", {"X"}},
    {"#ifndef A\n#ifdef B\nx\n#endif\ny\n#endif\nz", "\n\n\n\ny\n\nz", {"A", "B"}},
    {"#if !DEBUG\na\n#endif", "\n\n", {"!DEBUG"}},
    {"#region R\n  a\n#endregion", "\na\n", {}},
    {"#define X\n#ifdef X\na\n#endif", "\n\n\n", {"X"}},
    {"  int x;\n    y = 2;", "int x;\ny = 2;", {}},
    {"a\n   \n   b", "a\n\n   b", {}},
    {"  \n  \n    x\n  y", "\n  \nx\ny", {}},
    {"#ifdef A\n#else\n  #region R\nb\n#endif\n", "\n\n  \nb\n\n", {"A"}},
    {"#include <a>\n  b", "\n  b", {}},
    {"#if A\n#ifdef B\nx\n#else\ny\n#endif\n  z\n#endif\nw", "\n\n\n\n\n\n\n\nw", {"A", "B"}},
    {"#if A\n#if B\n#endif\n#else\nx", "\n\n\n\nx", {"A", "B"}},
    {"#if A\n#if A && B\nx\n#endif\ny\n#endif\n", "\n\n\n\ny\n\n", {"A", "A && B"}, {"A"}},
    {"#if A \\ \n  && B\nx\n#endif\ny", "\n\n\n\ny", {"A \\   && B"}},
    {"#ifndef\nx\n#else\ny\n#endif", "\nx\n\n\n", {}},
    {"#if A\nx\n#elif B\ny\n#elif B\nz\n#else\nw\n#endif\nv",
     "\n\n\ny\n\n\n\n\n\nv",
     {"A", "B"},
     {"B"}},
    {"#if A\nx\n#elif B\ny\n#else\nz\n#endif", "\nx\n\n\n\n\n", {"A", "B"}, {"A", "B"}},
    {"#if A\n#elif B\nx\n#else\ny\n#else\nz\n#endif", "\n\n\n\ny\n\n\n", {"A", "B"}},
    {"#if A\n#if B\n#elif B\nx\n#endif\n#endif\ny", "\n\n\n\n\n\ny", {"A", "B"}, {"B"}},
    {"#else\na\n#endif\nb\n#elif C\n c\n\x7F", "\na\n\nb\n\nc\n\x7F", {"C"}},
    {"a # b\n\n   c\n\t\xFF#d", "a # b\n\nc\n", {}},
};

TEST(Cleaner, SimulatesConditionals) {
    for (const DirectiveRow& row : kDirectiveRows) {
        Strings defines;
        EXPECT_EQ(Cleaner().PreProcessorSimulation(row.text, row.symbols, defines), row.kept)
            << row.text;
        EXPECT_EQ(defines, row.defines) << row.text;
        // Lines that are far from the end of the text take another way.
        const std::string further = row.text + "\n" + std::string(100, 'x');
        EXPECT_TRUE(
            Cleaner().PreProcessorSimulation(further, row.symbols, defines).starts_with(row.kept))
            << row.text;
    }
    Strings defines = {"B", "A"};
    Cleaner().PreProcessorSimulation("#if A\n#if C\n#if C\n", {}, defines);
    EXPECT_EQ(defines, (Strings{"B", "A", "C"}));
}

TEST(Cleaner, TracesLongLines) {
    Strings defines;
    const std::string indent(51, ' ');
    const std::string line = "   #if " + std::string(4100, 'A');
    testing::internal::CaptureStdout();
    Cleaner().PreProcessorSimulation(indent + "x\n" + line, {}, defines);
    std::string expected = "[[" + indent + "]]\n";
    for (std::size_t size = 51; size <= line.size(); ++size) {
        expected.append("[[").append(line, 0, size).append("]]\n");
    }
    EXPECT_TRUE(testing::internal::GetCapturedStdout() == expected) << "megabytes of text";
}

TEST(Cleaner, SplitsDirectives) {
    const std::pair<const char*, Strings> rows[] = {
        {"", {}},
        {"a #if", {}},
        {"  # if  X ", {"#if", "X"}},
        {"#if( X)", {"#if", "( X)"}},
        {"#if ! X", {"#if", "!X"}},
        {"#if 1 && X y", {"#if", "1&&X y"}},
        {"1(a", {"", "(a"}},
        {"#e1n-d", {"#end"}},
        {"#(", {"#"}},
        {"(", {""}},
        {"##if", {"##if"}},
    };
    for (const auto& [line, expected] : rows) {
        Strings parts;
        Cleaner().CleanerPartsList(line, parts);
        EXPECT_EQ(parts, expected) << line;
    }
}

TEST(Cleaner, DecidesConditions) {
    const std::tuple<const char*, int, bool> rows[] = {
        {"#if A", 1, true},      {"#if A", -1, false},    {"#ifdef B", 1, false},
        {"#ifndef B", 0, true},  {"#elif A", 1, false},   {"#elif A", 0, true},
        {"#elif A", 2, false},   {"#else", 0, true},      {"#else", 1, false},
        {"#include x", 0, true}, {"#region A", 0, false}, {"x", 0, false},
    };
    for (const auto& [line, previousState, active] : rows) {
        EXPECT_EQ(Cleaner().GetPreProcessorDirectiveActiveState(line, previousState, {"A"}), active)
            << line;
    }
}

TEST(Cleaner, RunsItsPassesInOrder) {
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"a\r\nb", "a\n\nb"},
        {"a\rb", "a\nb"},
        {"\tx = 'a\tb';", "x = 'a b';"},
        {"x; // c\n#if A\ny;\n#endif\nz;", "x; \n\n\n\nz;"},
        {"/* c */ #if A // d\nx", "\n"},
    };
    for (const auto& [text, cleaned] : rows) {
        Strings defines;
        testing::internal::CaptureStdout();
        EXPECT_EQ(Cleaner().CleanText(text, {}, defines), cleaned) << text;
        EXPECT_EQ(testing::internal::GetCapturedStdout().find("the final data is "), 0U);
        EXPECT_EQ(defines.empty(), text.find('#') == std::string::npos) << text;
    }
}

}  // namespace
