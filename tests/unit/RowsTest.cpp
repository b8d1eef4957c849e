#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "parsecs/forms/outline/Outline.h"
#include "parsecs/forms/rows/JsonLines.h"
#include "tests/support/RowChecks.h"
#include "text/CharClass.h"

using namespace plugincs;

namespace {

// A row as "what name lines", without a name its text, and its children in braces. Lines are left
// out where there is only the first.
class Dumper {
  public:
    explicit Dumper(const std::vector<Row>& rows) : rows_(rows) {}

    std::string Below(std::size_t row) {
        std::string out;
        for (std::size_t i = row + 1; i <= Last(row); i = Last(i) + 1) {
            out.append(out.empty() ? "" : " ").append(Told(rows_[i]));
            if (Last(i) > i) out.append("{").append(Below(i)).append("}");
        }
        return out;
    }

  private:
    std::size_t Last(std::size_t row) const { return static_cast<std::size_t>(rows_[row].last); }

    static std::string Told(const Row& row) {
        std::string told(row.declares == Declares::Nothing ? "" : NameOf(row.declares));
        told.append(told.empty() ? "" : " ");
        told.append(row.name.empty() ? "<" + std::string(row.text) + ">" : std::string(row.name));
        const std::string lines =
            std::to_string(row.begin.line) + "-" + std::to_string(row.end.line);
        return lines == "1-1" ? told : told + " " + lines;
    }

    const std::vector<Row>& rows_;
};

const std::pair<const char*, const char*> kStructures[] = {
    {"namespace N;\nenum E { A = 1, [X] B,\n}\nint M() => 1;",
     "namespace N enum E 2-3{enumerator A 2-2 enumerator B 2-2} local M 4-4"},
    // A declaration ends where its last byte is: behind its body, or its initial value.
    {"class C {\nint P { get; } = f(x => {\ng();\n});\nint Q;\n};",
     "class C 1-6{property P 2-4{<get> 2-2 <= f(x =>> 2-4{<g()> 3-3} <)> 4-4} field Q 5-5}"},
    {"class C {\nint[] a = {\n1 };\nint[] b = { 2\n} ;\n}",
     "class C 1-6{field a 2-3{<1> 3-3} field b 4-5{<2> 4-4}}"},
    {"class C {\nint F(int x) => x switch { 1 => 2,\n_ => 3\n};\nint G() { }\n}",
     "class C 1-6{method F 2-4{<1 => 2, _ => 3> 2-3} method G 5-5}"},
    {"class C { C() : base(x => { y(); }) { z(); } }", "class C{constructor C{<y()> <)>{<z()>}}}"},
    {"class C : B(new D { E = 1 }) { int f; }", "class C{<E = 1> <)>{field f}}"},
    {"class C { void F(string s = @\"{\") { a(); } int b; }", "class C{method F{<a()>} field b}"},
    {"class C { int P { get; } int Q; }", "class C{property P{<get>} field Q}"},
    {"class C { void operator +=(C c) { } int d; }", "class C{operator operator += field d}"},
    // An expression goes on behind its blocks, and each of its statements is there.
    {"void F() { g(a => { b(); c(); }, d => { if (e) h(); }, i);\nj(); }",
     "local F 1-2{<g(a =>>{<b()> <c()> <, d =>>{<if (e) h()>} <, i)>} <j()> 2-2}"},
    {"{ return new A { B = new C { D = e }, F = g }; h(); }",
     "<>{<return new A>{<B = new C>{<D = e>} <, F = g>} <h()>}"},
    {"{ x = delegate (int y) { z(); }; if (w is { V: 1 } u) { t(); } s(); }",
     "<>{<x = delegate (int y)>{<z()>} <if (w is>{<V: 1> <u)>{<t()>}} <s()>}"},
    {"{ if (a) return new B { C = d }; else { e(); } f(); }",
     "<>{<if (a) return new B>{<C = d>} <else>{<e()>} <f()>}"},
    {"{ switch (a) { case { B: 1 }: c(); break; case 2: { d(); } } while (e) { } f(); }",
     "<>{<switch (a)>{<case>{<B: 1> <: c()>} <break> <case 2:>{<d()>}} <while (e)> <f()>}"},
    {"{ void L() { } a = b with { c = d }; await foreach (var e in f) { } g(); }",
     "<>{local L <a = b with>{<c = d>} <await foreach (var e in f)> <g()>}"},
    // Of several names each has a row.
    {"class C { int a, b = 1,\nc; event E d, e; int[] f = { 1 }, g = { 2 }; }",
     "class C 1-2{field a 1-2{field b field c 2-2} event d 2-2{event e 2-2} "
     "field f 2-2{<1> 2-2 <, g => 2-2{field g 2-2{<2> 2-2}}}}"},
    {"class C { int a, b = new[] { 1 }[0], c, d = { 2 }, e; event E f = G(h => { }, i, j), k; }",
     "class C{field a{field b{<1>} <[0], c, d =>{field c field d{<2>}} <, e>{field e}} "
     "event f{<, i, j), k>{event k}}}"},
    // Nothing is lost.
    {"f(a, b", "<f(a, b>"},
    {"[assembly: A]\nclass C { [B] }\n[module: D]",
     "<[assembly: A]> class C 2-2{<[B]> 2-2} <[module: D]> 3-3"},
    {"class C { f(1)); int x; void G() { } } class D { }", "class C{constructor f} class D"},
    {"class C { extension(string s) { int N() => 1; } record R(int A); }",
     "class C{<extension(string s)>{method N} record R}"},
    {"enum E { [A)] (, b }", "enum E{<(, b>}"},
    {"} class A { } b; c", "<namespace global> class A <b> <> 0-0"},
};

TEST(Rows, AreNestedAsTheSourceIs) {
    for (const auto& [source, expected] : kStructures) {
        const FileRows file("a.cs", source);
        Dumper dumper(file.rows());
        const std::string beside = file.stoppedAt() > 0 ? Dumper(file.rows()).Below(0) : "";
        EXPECT_EQ(BrokenByRows(file, source), "") << source;
        EXPECT_EQ(dumper.Below(1) + beside, expected) << source;
    }
}

// What is said of a row beside its name.
TEST(Rows, TellTheirSurroundingsInTheFilesOwnWords) {
    const std::string source =
        "namespace \xC3\x84.B; [C(\"  \")] // c\n[D] public  static class @E<T> {\n"
        "[F] const string g = \"h\ti\" +\n/* j */ @\"k\\\", l = \"\xFF\"; int \\u0041m() { n(); } "
        "}";
    const FileRows file("a.cs", source);
    const std::vector<Row>& rows = file.rows();
    const auto told = [&rows](std::size_t i) {
        const Row& row = rows[i];
        return std::string(row.scope)
            .append("|")
            .append(row.modifiers)
            .append("|")
            .append(row.attributes)
            .append("|")
            .append(row.name)
            .append("|")
            .append(row.text);
    };
    EXPECT_EQ(told(2), "|||\xC3\x84.B|namespace \xC3\x84.B");
    EXPECT_EQ(told(3), "\xC3\x84.B|public static|[C(\"  \")] [D]|E|public static class @E<T>");
    EXPECT_EQ(told(4),
              "\xC3\x84.B.E|const|[F]|g|const string g = \"h\ti\" + @\"k\\\", l = "
              "\"\xEF\xBF\xBD\"");
    EXPECT_EQ(told(5), "\xC3\x84.B.E|const||l|l = \"\xEF\xBF\xBD\"");
    EXPECT_EQ(rows[5].begin.line * 100 + rows[5].begin.column, 416);
    EXPECT_EQ(told(6), "\xC3\x84.B.E|||\\u0041m|int \\u0041m()");
    EXPECT_EQ(told(7), "\xC3\x84.B.E.\\u0041m||||n()");
}

TEST(Rows, AreLinearInWhateverTheyAreMadeOf) {
    const std::pair<std::string, std::string> shapes[] = {
        {"", "class C{"},
        {"", "a=>{"},
        {"", "f(x=>{"},
        {"", "int a,"},
        {"", "{"},
        {"", "namespace N{"},
        {"", "[A]"},
        {"", "x={"},
        {"", "#if A\n{\n"},
        {"", "int F(){"},
        {"", "é."},
        {"", "enum{a,"},
        {"class C{a b", ",c"},
        {"class C{a b=", "c<"},
        {"void ", "a("},
        {"@\"", "\"\""},
    };
    for (const auto& [start, unit] : shapes) {
        std::string source = start;
        while (source.size() < 500000) source += unit;
        source += ".b";
        const FileRows file("a.cs", source);
        EXPECT_EQ(BrokenByRows(file, source), "") << unit;
    }
}

// Programs of templates: '$' is a unique name, '%' a dollar, '~' any white space or comment, '|'
// any line end; a piece between '<' and '>' shows in no text.
constexpr const char* kPieces[] = {
    "$~$ = $;~",
    "\t\xC3\xA4$ $(\"{;\\\"}//\", '\\'')~;",
    "[A(\"x\")] $~$;",
    "$ =| [B] $;|[C, D]|[E] $();",
    "<|#if A|>$;<|#elif it's|>$~$;<|#endif|>",
    "<|#region {it's|>$;<|#endregion|>",
    "$ =<|#if A|> $ +<|#else|> $ -<|#endif|>  $;",
    "$(@\"c:\\$\", %\"{$[\"}\"]}\", \"\"\"| \" $ | \"\"\");",
    "$($; $; $) {~",
    "class $ :~$|{",
    "enum $ { $ = 1, [A] $~}",
    "$ = $ => {~$;~}~;",
    "$($ => { $; }, new $ { $ = $ }~);",
    "int $ { get; } = new() {~$~};",
    "public struct $~{~",
    "{~",
    "if ($ == $)~{ ; ",
    "~}~",
    "~} ",
    "~}|;",
    "< /* { \" * */>$;",
    "<// don't; {|>$;",
    "\xE3\x81\x82$ = \\u0041$;",
};

constexpr const char* kGaps[] = {" ", "|", "\t ", "< /*;{*/ >", " <// }\"|>", "||", "<|//[A]|>"};
constexpr const char* kLineEnds[] = {"\n", "\r\n", "\r", "\n\r"};

struct Program {
    std::string source;
    std::vector<bool> shown;  // of each byte, whether texts have it, white space aside
};

class Programs {
  public:
    Program Next() {
        Program program;
        for (auto count = draw_() % 40; count > 0; --count) Add(Pick(kPieces), program);
        return program;
    }

  private:
    template <std::size_t N>
    const char* Pick(const char* const (&choices)[N]) {
        return choices[draw_() % N];
    }

    void Add(const char* piece, Program& program) {
        for (; *piece != '\0'; ++piece) {
            if (*piece == '<' || *piece == '>') {
                hidden_ = *piece == '<';
            } else if (*piece == '~') {
                Add(Pick(kGaps), program);
            } else {
                std::string bytes(1, *piece);
                if (*piece == '$') bytes = "n" + std::to_string(names_++);
                if (*piece == '%') bytes = "$";
                if (*piece == '|') bytes = Pick(kLineEnds);
                program.source += bytes;
                program.shown.resize(program.source.size(), !hidden_);
            }
        }
    }

    std::mt19937 draw_{1};
    int names_ = 0;  // makes names unique, so that a row's text occurs only once
    bool hidden_ = false;
};

std::string WithoutWhiteSpace(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), IsAsciiSpace), text.end());
    return text;
}

// The bytes of the program between two places that texts show.
std::string Shown(const Program& program, std::size_t begin, std::size_t end) {
    std::string shown;
    for (std::size_t at = begin; at < end; ++at) {
        if (program.shown[at]) shown += program.source[at];
    }
    return WithoutWhiteSpace(shown);
}

// Checks that the program has the row's text at its place, and ends the row behind it.
std::string Misplaced(const Row& row, const Program& program) {
    const Positions positions(program.source);
    const std::size_t begin = positions.Of(row.begin);
    const std::string text = WithoutWhiteSpace(std::string(row.text));
    if (text.empty()) return "";
    if (program.source[begin] != text[0]) return "another first byte";
    const std::size_t end = positions.Of(row.end);
    if (!Shown(program, begin, program.source.size()).starts_with(text)) return "another text";
    if (!Shown(program, begin, end + 1).starts_with(text)) return "an end within the text";
    const char last = program.source[end];
    const bool closed = last == ';' || last == '}' || end + 1 == program.source.size();
    const bool rest = Shown(program, begin, end + 1) == text;  // no ';' ends it
    return closed || rest ? "" : "another end";
}

TEST(Rows, StandWhereTheyWereRead) {
    Programs programs;
    std::size_t checked = 0;
    for (int round = 0; round < 1500; ++round) {
        const Program program = programs.Next();
        const FileRows file("a.cs", program.source);
        ASSERT_EQ(BrokenByRows(file, program.source), "") << program.source;
        for (std::size_t i = 2; i + 1 < file.rows().size() && file.stoppedAt() == 0;
             ++i, ++checked) {
            ASSERT_EQ(Misplaced(file.rows()[i], program), "") << program.source << "\n"
                                                              << file.rows()[i].text;
        }
    }
    EXPECT_GT(checked, 15000U);
}

std::string Lines(std::string path, std::string source) {
    std::string lines;
    AppendJsonLines(FileRows(std::move(path), std::move(source)), lines);
    return lines;
}

TEST(JsonLines, AreTheSameForEveryFile) {
    const std::string file = R"({"file":"s/\u000aa.cs","id":)";
    const std::string nothing =
        R"("declares":"","name":"","scope":"","modifiers":"","attributes":"",)";
    const std::string whole = nothing + R"("line":1,"column":1,"endLine":3,"endColumn":12,"text":)";
    const std::string expected =
        file + R"(0,"parent":-1,"last":4,"depth":0,"kind":"filepath",)" + whole +
        "\"\\u000aa.cs\"}\n" + file + R"(1,"parent":0,"last":3,"depth":1,"kind":"namespace",)" +
        whole + "\"namespace global\"}\n" + file +
        R"(2,"parent":1,"last":3,"depth":2,"kind":"class","declares":"class","name":"C","scope":"",)"
        R"("modifiers":"public sealed","attributes":"[B(\"\\\"\")]",)"
        R"("line":2,"column":10,"endLine":3,"endColumn":12,"text":"public sealed class C"})"
        "\n" +
        file +
        R"(3,"parent":2,"last":3,"depth":3,"kind":"classvar","declares":"field","name":"d",)"
        R"("scope":"C","modifiers":"","attributes":"",)"
        R"("line":3,"column":2,"endLine":3,"endColumn":11,"text":"int d='\"'"})"
        "\n" +
        file + R"(4,"parent":0,"last":4,"depth":1,"kind":"preprocessor",)" + nothing +
        R"("line":null,"column":null,"endLine":null,"endColumn":null,"text":"A"})"
        "\n";
    EXPECT_EQ(Lines("s/\na.cs", "#ifndef A\r[B(\"\\\"\")]public sealed class C {\n int d='\"';}"),
              expected);
    EXPECT_EQ(Lines("", "").find("\"line\":1"), std::string::npos);
}

constexpr const char* kLetters = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";

std::string Outlined(OutlineStyle style, const char* path = kLetters) {
    std::string text;
    AppendOutline(FileRows(path, "\n" + std::string(30, '{') + "a =\n b;"), style, text);
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
