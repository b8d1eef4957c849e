#include "host/StrictJson.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using std::string_literals::operator""s;

struct Row {
    std::string text;
    std::string strict;
};

// That many times U+FFFD.
std::string Bad(int times) {
    std::string bad;
    while (times-- > 0) bad += "\xEF\xBF\xBD";
    return bad;
}

// What stands in a string of the module's text, and what becomes of it.
const Row kRows[] = {
    {"it\\'s \\\\\\' \\\"", "it's \\\\' \\\""},
    {"\\\\'", "\\\\'"},
    {"a\n\t\r\b\f\x01\x1F\0b"s, "a\\n\\t\\r\\b\\f\\u0001\\u001f\\u0000b"},
    {"\\\n", "\\\\\\n"},
    {"\x7F \\u00e9 \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF",
     "\x7F \\u00e9 \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF"},
    {"\x80|\xFF|\xFE", Bad(1) + "|" + Bad(1) + "|" + Bad(1)},
    {"\xC0\x80|\xC1\xBF", Bad(2) + "|" + Bad(2)},              // overlong
    {"\xE0\x9F\xBF|\xF0\x8F\xBF\xBF", Bad(3) + "|" + Bad(4)},  // overlong
    {"\xED\xA0\x80|\xED\x9F\xBF", Bad(3) + "|\xED\x9F\xBF"},   // surrogates
    {"\xF4\x90\x80\x80|\xF5\x80", Bad(4) + "|" + Bad(2)},      // above U+10FFFF
    {"\xC3", Bad(1)},
    {"\xE2\x82|\xF0\x9F\x98", Bad(2) + "|" + Bad(3)},  // cut short
};

TEST(StrictJson, RepairsStringsAndNothingElse) {
    for (const Row& row : kRows) {
        const std::string text = "[\n  {\"a\\\\\": \"" + row.text + "\", \"b\":\t\"\"}\n]\n";
        const std::string expected = "[\n  {\"a\\\\\": \"" + row.strict + "\", \"b\":\t\"\"}\n]\n";
        EXPECT_EQ(StrictJson(text), expected);
        EXPECT_EQ(StrictJson(expected), expected);
        const auto records = nlohmann::json::parse(expected);
        EXPECT_EQ(OneLine(expected).find_first_of("\n\t"), std::string::npos);
        EXPECT_EQ(nlohmann::json::parse(OneLine(expected)), records);
        const auto line = nlohmann::json::parse(FileLine("q\"\\\n\xFF'.cs", text));
        EXPECT_EQ(line["file"], "q\"\\\n" + Bad(1) + "'.cs");
        EXPECT_EQ(line["records"], records);
    }
}

}  // namespace
