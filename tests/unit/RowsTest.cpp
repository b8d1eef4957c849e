#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "cleaner/Cleaner.h"
#include "parsecs/outline/Outline.h"
#include "parsecs/rows/JsonLines.h"
#include "tests/support/RowChecks.h"
#include "text/CharClass.h"

namespace {

// Templates: '$' is a unique name, '~' any white space or comment, a line feed any line end.
constexpr const char* kPieces[] = {
    "$~$ = $;~",
    "\t\xC3\xA4 $(\"{;\\\"}//\", '\\'')~;",
    "\n[A(\"x\")] $~$;",
    "$ =\n [B] $;\n[C, D]\n$(typeof(int[]));",
    "\n#if A\n$;\n#endif\n",
    "\n#ifndef A\n  $~;\n#else\n$;\n#endif\n",
    "$ =\n#if A\n$ +\n#endif\n  $;",
    "$ \\ \n$;",
    "$(@\"c:\\$\", $\"{$}\");",
    "$($; $; $) {~",
    "class $ :~$\n{",
    "public struct $~{~",
    "{~",
    "if ($ == $)~{ ; #region $\n$; #endregion\n",
    "; #if $~\n$~{ $; } #else  \n$; #endif\n",
    "~}~",
    "~} ",
    "~}\n;",
    "; #if $\n$; #else /*;*/ \\ \n$~\n$; #endif\n",
    "; #define $ \n$;",
    "/* { \" * */$;",
    "// don't; {\n$;",
};

constexpr const char* kGaps[] = {" ", "\n", "\t ", " /*;{*/ ", " // }\"\n", "\n\n", "\n//[A]\n"};
constexpr const char* kLineEnds[] = {"\n", "\r\n", "\r", "\n\r"};

class Programs {
  public:
    std::string Next() {
        std::string program;
        for (auto count = draw_() % 40; count > 0; --count) Add(Pick(kPieces), program);
        const bool cut = draw_() % 4 == 0;
        return program.substr(0, cut ? draw_() % (program.size() + 1) : std::string::npos);
    }

  private:
    template <std::size_t N>
    const char* Pick(const char* const (&choices)[N]) {
        return choices[draw_() % N];
    }

    void Add(const char* piece, std::string& program) {
        for (; *piece != '\0'; ++piece) {
            if (*piece == '~') Add(Pick(kGaps), program);
            if (*piece == '$') program.append("n").append(std::to_string(names_++));
            if (*piece == '\n') program += Pick(kLineEnds);
            if (std::string_view("~$\n").find(*piece) == std::string_view::npos) program += *piece;
        }
    }

    std::mt19937 draw_{1};
    int names_ = 0;  // makes names unique, so that a row's text occurs only once
};

std::string WithoutWhiteSpace(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), IsAsciiSpace), text.end());
    return text;
}

// A piece of the source, cleaned as if in the middle of a line, without white space.
std::string Cleaned(std::string_view source, std::size_t begin, std::size_t length) {
    std::vector<std::string> defines;
    const std::string text = std::string("{").append(source.substr(begin, length));
    return WithoutWhiteSpace(Cleaner().CleanText(text, {}, defines, Traces(nullptr))).substr(1);
}

// Whether a block can end at this byte: a brace, or the last byte of a directive that closes it.
bool EndsBlock(std::string_view source, std::size_t end) {
    const std::size_t directive = source.rfind("#e", end);
    const bool near = directive != std::string_view::npos && end - directive < 50;
    const bool whole = end + 1 == source.size() || !IsWordCharacter(source[end + 1]);
    return source[end] == '}' || (near && whole && !IsAsciiSpace(source[end]));
}

// Checks that the source has the row's text at its place, and after it what ends it.
std::string Misplaced(const Row& row, std::string_view source) {
    const Positions positions(source);
    const std::size_t begin = positions.Of(row.begin);
    const std::size_t end = positions.Of(row.end);
    const std::string text = WithoutWhiteSpace(std::string(row.text));
    const std::string found = Cleaned(source, begin, std::string_view::npos);
    if (!text.empty() && source[begin] != text[0]) return "another first byte";
    if (!found.starts_with(text)) return "another text";
    const char behind = found[text.size()];
    const std::string whole = Cleaned(source, begin, end + 1 - begin);
    const bool section = text.starts_with('#') && text[1] != 'd';
    if (section || behind == '{') {
        return end + 1 == source.size() || EndsBlock(source, end) ? "" : "another end of a block";
    }
    const bool ended = text.starts_with('#') ? whole == text : whole == text + behind;
    return ended ? "" : "another end of a statement";
}

std::string Broken(const std::string& source, std::size_t& checked) {
    const ParsedFile file({"a.cs", source});
    const std::vector<Row>& rows = file.rows();
    std::string broken = BrokenByRows(file, source);
    for (std::size_t i = 2; i + 1 < rows.size() && broken.empty(); ++i, ++checked) {
        broken = Misplaced(rows[i], source);
        if (!broken.empty()) broken.append(": ").append(rows[i].text);
    }
    return broken;
}

TEST(Rows, StandWhereTheyWereRead) {
    Programs programs;
    std::size_t checked = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::string source = programs.Next();
        ASSERT_EQ(Broken(source, checked), "") << source;
    }
    EXPECT_GT(checked, 15000U);
}

std::string Lines(std::string path, std::string source) {
    std::string lines;
    AppendJsonLines(ParsedFile({std::move(path), std::move(source)}), lines);
    return lines;
}

TEST(JsonLines, AreTheSameForEveryFile) {
    const std::string file = R"({"file":"s/\u000aa.cs","id":)";
    const std::string whole = R"(,"name":"","line":1,"column":1,"endLine":2,"endColumn":7,"text":)";
    EXPECT_EQ(Lines("s/\na.cs", "#ifndef A\r c='\"';"),
              file + R"(0,"parent":-1,"last":3,"depth":0,"kind":"filepath")" + whole +
                  "\"\\u000aa.cs\"}\n" + file +
                  R"(1,"parent":0,"last":2,"depth":1,"kind":"namespace")" + whole +
                  "\"namespace global\"}\n" + file +
                  R"(2,"parent":1,"last":2,"depth":2,"kind":"line","name":"",)"
                  R"("line":2,"column":2,"endLine":2,"endColumn":7,"text":"c='\"'"})"
                  "\n" +
                  file +
                  R"(3,"parent":0,"last":3,"depth":1,"kind":"preprocessor","name":"",)"
                  R"("line":null,"column":null,"endLine":null,"endColumn":null,"text":"A"})"
                  "\n");
    EXPECT_EQ(Lines("", "").find("\"line\":1"), std::string::npos);
    EXPECT_EQ(Lines("", ";#endif\n;#endif\n"), "");
}

constexpr const char* kLetters = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";

std::string Outlined(OutlineStyle style, const char* path = kLetters) {
    std::string text;
    AppendOutline(ParsedFile({path, "\n" + std::string(30, '{') + "a =\n b;"}), style, text);
    return text;
}

TEST(Outline, FitsAndIndents) {
    const std::string all = Outlined({});
    EXPECT_NE(all.find("\n     1    namespace  namespace global\n     2      define  \n"),
              std::string::npos);
    const std::string deepest = std::string("\n     2").append(42, ' ').append("line  a = b\n");
    EXPECT_NE(all.find(deepest), std::string::npos);
    const std::string first =
        "\x1B[2m     1  \x1B[0m\x1B[36mfilepath\x1B[0m  \xC3\xA4\xC3\xA4...\n"
        "\x1B[2m     1    \x1B[0m\x1B[36mnamespace\x1B[0m  na...\n";
    EXPECT_EQ(Outlined({.width = 26, .colour = true}).substr(0, first.size()), first);
    const std::string blanks = Outlined({}, "a\x7F\r\n b\x01");
    EXPECT_TRUE(blanks.substr(0, blanks.find('\n')).ends_with("  a b ")) << blanks;
    const std::string exact = std::string("     1  filepath  ").append(kLetters).append("\n");
    EXPECT_EQ(Outlined({.width = 28}).substr(0, exact.size()), exact);
}

}  // namespace
