#include "rows/Literals.h"

#include <gtest/gtest.h>

#include <string>

using namespace plugincs;

namespace {

// A literal, and what follows it.
struct Row {
    std::string_view literal;
    std::string_view rest = ";";
    bool closed = true;
};

const Row kRows[] = {
    {"\"\""},
    {"\"a\\\"b\\\\\""},
    {"'\\''"},
    {"'\"'"},
    {"\"open \\", "\nb\"", false},
    {"'t is", "\r'", false},
    {"\"open", "", false},
    // Verbatim: a backslash is text, and a doubled quote is one.
    {"@\"c:\\\""},
    {"@\"a\"\"b\n\"\"\""},
    {"@\"open", "\n", false},
    // Interpolated: holes hold code, with literals and braces of their own.
    {"$\"{{ \\\" }}\""},
    {"$\"{a[\"b\"]} {c}\""},
    {"$\"{f('\"', \"}\")} }\""},
    {"$\"{new { A = $\"{b}\" }}\""},
    {"$\"{x /* \" */}\""},
    {"$\"{\n  x // \"\n}\""},
    {"$@\"\\{a}\"\"{b}\""},
    {"@$\"{\"\\\\\"}\""},
    // A format is text; a colon of a name is none of it.
    {"$\"{d:h 'o''clock'}\""},
    {"$\"{global::A.B} {(a ? \"b\" : \"c\")}\""},
    {"$\"{x,5:F2}\""},
    // What looks like a hole may be none.
    {"$\"{\"", " + x;"},
    // Raw: as many quotes end it as began it.
    {"\"\"\"a \"\" b\"\"\""},
    {"\"\"\"\"a\n\"\"\"\n\"\"\"\""},
    {"$\"\"\"{a(\"b\")} }\"\"\""},
    {"$$\"\"\"{x} {{{y[\"z\"]}}} \"\"\""},
    {"\"\"\"\n{ \"a\": '}\n\"\"\""},
};

TEST(Literals, EndWhereCSharpEndsThem) {
    for (const Row& row : kRows) {
        const std::string text = "x = " + std::string(row.literal) + std::string(row.rest);
        const std::size_t quote = text.find_first_of("\"'");
        const LiteralEnd found = LiteralFinder(text).EndOf(quote);
        EXPECT_EQ(text.substr(4, found.end - 4), row.literal);
        EXPECT_EQ(found.closed, row.closed) << text;
        EXPECT_EQ(FindPrefix(text, quote), 4U) << text;
    }
}

TEST(Literals, MayLieInOneAnotherAtAnyDepth) {
    std::string text;
    for (int i = 0; i < 200000; ++i) text += "$\"{";
    LiteralFinder broken(text);
    for (std::size_t at = 1; at < text.size(); at += 3) {
        EXPECT_EQ(broken.EndOf(at).closed, at + 3 < text.size());
    }
    for (int i = 0; i < 200000; ++i) text += "}\"";
    EXPECT_EQ(LiteralFinder(text).EndOf(1).end, text.size());
}

}  // namespace
