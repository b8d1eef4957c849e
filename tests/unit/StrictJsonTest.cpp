#include "parsecs/forms/strict/StrictJson.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "parsecs/json/JsonString.h"

using namespace plugincs;

namespace {

using std::string_literals::operator""s;

struct Row {
    std::string text;
    std::string strict;
};

// U+FFFD, repeated.
std::string Bad(int times) {
    std::string bad;
    while (times-- > 0) bad += "\xEF\xBF\xBD";
    return bad;
}

// Contents of a string in the module's text, and their repaired form.
const Row kRows[] = {
    {"it\\'s \\\\\\' \\\"", "it's \\\\' \\\""},
    {"\\\\'", "\\\\'"},
    {"a\n\t\x1F\0b"s, "a\\u000a\\u0009\\u001f\\u0000b"},
    {"\x7F \\u00e9 \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF",
     "\x7F \\u00e9 \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF"},
    {"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xEF\xBF\xBF \xF0\x90\x80\x80",
     "\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xEF\xBF\xBF \xF0\x90\x80\x80"},
    {"\x80|\xFF|\xFE", Bad(1) + "|" + Bad(1) + "|" + Bad(1)},
    {"\xC0\x80|\xC1\xBF", Bad(2) + "|" + Bad(2)},                  // overlong
    {"\xE0\x9F\xBF|\xF0\x8F\xBF\xBF", Bad(3) + "|" + Bad(4)},      // overlong
    {"\xED\xA0\x80|\xED\x9F\xBF", Bad(3) + "|\xED\x9F\xBF"},       // surrogates
    {"\xF4\x90\x80\x80|\xF5\x80\x80\x80", Bad(4) + "|" + Bad(4)},  // above U+10FFFF
    {"\xC3", Bad(1)},
    {"\xE2\x82|\xF0\x9F\x98", Bad(2) + "|" + Bad(3)},  // cut short
};

TEST(StrictJson, RepairsStringsAndNothingElse) {
    for (const Row& row : kRows) {
        const std::string text = "[\n  {\"a\\\\\": \"" + row.text + "\", \"b\":\t\"\"}\n]\n";
        const std::string expected = "[\n  {\"a\\\\\": \"" + row.strict + "\", \"b\":\t\"\"}\n]\n";
        EXPECT_EQ(StrictJson(text), expected);
        EXPECT_EQ(StrictJson(expected), expected);
        EXPECT_TRUE(nlohmann::json::accept(expected));
    }
}

TEST(JsonString, TakesAnyBytes) {
    const std::string escaped = "\"a long text before\\\\ \\\"and behind\\\"\"";
    EXPECT_EQ(JsonString("a long text before\\ \"and behind\""), escaped);
    for (const Row& row : kRows) {
        if (row.text.find('\\') != std::string::npos) continue;
        EXPECT_EQ(JsonString(row.text), '"' + row.strict + '"');
    }
}

}  // namespace
