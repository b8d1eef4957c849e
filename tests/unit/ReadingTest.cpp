#include "rows/Reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace plugincs;

namespace {

using namespace std::literals;

struct Row {
    std::string source;
    std::string text;  // for the core, '~' for each blank where there are several
    std::string attributes = "";
};

// Texts are given with runs of blanks reduced.
std::string Reduced(const std::string& text) {
    std::string reduced;
    for (const char c : text) {
        if (c != ' ' || (!reduced.empty() && reduced.back() != ' ')) reduced += c;
    }
    if (reduced.ends_with(' ')) reduced.pop_back();
    return reduced;
}

const Row kRows[] = {
    {"a // b\n/* c; { */ d", "a d"},
    {"a /* never closed", "a"},
    {"a / b", "a / b"},
    {"x\t=\r\n\f1;\x7F\x01", "x = 1;"},
    {"\xEF\xBB\xBF#region it's\nclass \xC3\x84 { }", "class aa { }"},
    {"a\xC2\xA0\xE3\x80\x80"
     "b\xFF"
     "c",
     "a bac"},
    {"int \\u0041b;", "int uu0041b;"},
    {"a # b;\n  # pragma x \"\nc", "a _ b; c"},
    // Literals that the core reads as C# does stay; others become harmless.
    {"s = \"{;\\\"}//\" + '\\'';", "s = \"{;\\\"}//\" + '\\'';"},
    {"s = @\"c:\\\" + 't';", "s = @\"c__\" + 't';"},
    {"s = @\"a\"\"b;\";", "s = @\"a__b_\";"},
    {"s = $\"{a[\"b\"]}\";", "s = $\"_a__b___\";"},
    {"s = \"\"\"\n{ \"a\" }\n\"\"\";", "s = \"______a______\";"},
    {"s = \"open {\nt;", "s = _open__ t;"},
    {"c = 'x;\nd;", "c = _x_ d;"},
    // Attribute sections at the start of a statement go; other brackets stay.
    {"[A(\"]\", new[] { 1 })] [B]\nclass C { [D] int x; }", "class C { int x; }",
     "[A(\"]\", new[] { 1 })]|[B]|[D]"},
    {"[A] // c\n#if X\n[B]\n#endif\nvoid F([C] int x)", "void F([C] int x)", "[A]|[B]"},
    {"[assembly: A(1)]", "", "[assembly: A(1)]"},
    {"x = new D {\n[1] = 2, [3] = 4 };", "x = new D { [1] = 2, [3] = 4 };"},
    {"y = x switch { [1, _] => 2, [..] when z => 3 };",
     "y = x switch { [1, _] => 2, [..] when z => 3 };"},
    {"{ [1, 2], [3] }", "{ [1, 2], [3] }"},
    {"[A", "[A"},
    {"[A; b] c;", "[A; b] c;"},
    {"{ [A }\n[B] c;", "{ [A } c;", "[B]"},
    {"a =\n[1] + b\n(c);", "a = [1] + b (c);"},
    // Enumerators end like statements.
    {"enum E : byte { A = F(1, 2), [X] B, /*,*/ C }", "enum E : byte { A = F(1, 2); B; C }", "[X]"},
    {"enum E { A\n#if X\n, B = 1\n#else\n, C\n#elif Y\nD\n#endif\n, }",
     "enum E { A ; B = 1 ; C ; D ; }"},
    {"enum E { A = (1\n#if X\n+ 2\n#else\n+ 3\n#endif\n), B }", "enum E { A = (1 + 2 + 3 ); B }"},
    {"f(\"enum\", () => { g(1), h; });", "f(\"enum\", () => { g(1), h; });"},
    {"enumerate { a, b }", "enumerate { a, b }"},
};

std::string Joined(const std::vector<Span>& spans, const std::string& source) {
    std::string joined;
    for (const Span& span : spans) {
        joined.append(joined.empty() ? "" : "|").append(source, span.begin, span.end - span.begin);
    }
    return joined;
}

TEST(Reading, LeavesNothingThatTheCoreCouldMisread) {
    for (const Row& row : kRows) {
        const Reading reading = MakeReading(row.source);
        EXPECT_EQ(reading.text.size(), row.source.size());
        EXPECT_EQ(Reduced(reading.text), row.text) << row.source;
        EXPECT_EQ(Joined(reading.attributes, row.source), row.attributes) << row.source;
    }
}

struct ConditionalRow {
    std::string source;  // lines end at '|'
    std::string text;
    std::string cut = "";  // lines, counted from 0
};

const ConditionalRow kConditionalRows[] = {
    {"#if A|a {|b; }|#elif B|c;|#else|d;|#endif|e;", "a { b; } c; d; e;"},
    {"# if A // x|a;|# endif|#else|#endif", "a;"},
    // One branch of those that do not balance.
    {"#if A|class B {|#else|class C {|#endif|}", "class B { }", "0"},
    {"#if A|f(a|#else|f(b|#endif|);", "f(a );", "0"},
    {"#if A|a; }|#else|} b {|#endif|", "} b {", "0"},
    // The one with which the file balances; none, if there is no "#else".
    {"#if A|x { {|#else|y {|#endif|}", "y { }", "0"},
    {"a {|#if A|{|#endif|}", "a { }", "1"},
    {"a {|#if A|}|#endif|#if B|}|#endif|", "a { }", "1"},
    // What is the only one, and stays, is not cut.
    {"a {|#if A|} b {|#endif|}", "a { } b { }"},
    {"#if A|x {|#endif|#if B|}|#endif|", "x { }"},
    // Groups within groups.
    {"#if A|#if B|x {|#else|y {|#endif|}|#else|z;|#endif|", "x { } z;", "1"},
    {"#if A|{|#if B|b;|#endif|#else|{ {|#if C|( |#else| ((|#endif|#endif|}", "{ b; }", "0"},
    {"#if A|a;|#if B|b;", "a; b;"},
    {"/*|#if A|*/ a;|#endif|@\"|#if B|\"", "a; @\" #if B \""},
};

TEST(Reading, KeepsBranchesThatBalance) {
    for (const auto& [lines, text, cut] : kConditionalRows) {
        std::string source = lines;
        std::replace(source.begin(), source.end(), '|', '\n');
        const Reading reading = MakeReading(source);
        EXPECT_EQ(Reduced(reading.text), text) << source;
        std::string cuts;
        for (const std::size_t at : reading.cut) {
            cuts += std::to_string(
                std::count(source.begin(), source.begin() + static_cast<long>(at), '\n'));
        }
        EXPECT_EQ(cuts, cut) << source;
    }
}

TEST(Reading, CollectsOperandsAndComments) {
    const std::string source =
        "#if A && B // why\n//c\n#elif !C\n#ifdef A && B\n#region \"d // e\n/* f\n*/#else // g";
    const Reading reading = MakeReading(source);
    EXPECT_EQ(reading.operands, (std::vector<std::string>{"A && B", "!C"}));
    EXPECT_EQ(Joined(reading.comments, source), "// why|//c|/* f\n*/|// g");
}

TEST(Reading, IsLinearInWhateverItReads) {
    for (const std::string& unit : {"["s, ";["s, "[{"s, "[A]"s, "#if A\n{"s, "#"s, " #"s, "$\"{"s,
                                    "\"\"\""s, "/*"s, "\\u"s, "enum{"s, "\xFF"s}) {
        std::string source;
        while (source.size() < 2000000) source += unit;
        EXPECT_EQ(MakeReading(source).text.size(), source.size());
    }
}

}  // namespace
