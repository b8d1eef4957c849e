#include <gtest/gtest.h>

#include "analysis/Classifiers.h"
#include "analysis/FirstLook.h"
#include "analysis/FunctionName.h"
#include "analysis/PartWalker.h"
#include "text/StringHelpers.h"

using namespace plugincs;

namespace {

const std::pair<const char*, std::vector<std::string>> kPartRows[] = {
    {"", {}},
    {"int x = 5;", {"int", "x", "=", "5", ";"}},
    {"x=-1", {"x", "=", "-", "1"}},
    {"a->b", {"a", "->", "b"}},
    {"a != b", {"a", "!", "=", "b"}},
    {"x!=y", {"x!", "=", "y"}},
    {"a&&b", {"a&&b"}},
    {"a.b(c)", {"a", ".", "b", "(", "c", ")"}},
    {"3.14", {"3.14"}},
    {"x1.y", {"x1.y"}},
    {"a::b", {"a", ":", ":", "b"}},
    {"Dictionary<string,List<int>> d",
     {"Dictionary", "<", "string", ",", "List", "<", "int", ">>", "d"}},
    {"int[] a", {"int", "[", "]", "a"}},
    {"c = 'x';", {"c", "=", "'x'", ";"}},
    {"x .5..6", {"x", ".", "5.", ".", "6"}},
    {"f\"a 'b\\\\\"+'\\''x", {"f", "\"a 'b\\\\\"", "+", "'\\''", "x"}},
    {"a \"never = closed\\", {"a", "\"never = closed\\"}},
    {"a=*=b<<=c", {"a", "=", "*=", "b", "<<=", "c"}},
    {"\xC3\xA9\\t\v\f!~", {"\xC3\xA9\\t", "!~"}},
};

TEST(Analysis, SplitsStatementsIntoParts) {
    for (const auto& [text, expected] : kPartRows) {
        std::vector<std::string> parts;
        PartsList(text, parts);
        EXPECT_EQ(parts, expected) << text;
    }
    std::vector<std::string> own{"int a = b"};  // moves as it grows
    PartsList(own[0], own);
    EXPECT_EQ(own, (std::vector<std::string>{"int a = b", "int", "a", "=", "b"}));
}

struct ClassifierRow {
    const char* text;
    const char* yes;  // R return, L logic, O loop, D defines, F function, V variable
};

const ClassifierRow kClassifierRows[] = {
    {"return x", "RV"},
    {"return Foo(x)", "RF"},
    {"returnValue = 1", ""},
    {"if (x > 0)", "L"},
    {"else if (y)", "LF"},
    {"catch (Exception e)", "L"},
    {"switch (k)", "L"},
    {"try", "L"},
    {"elsewhere", ""},
    {"while (a)", "O"},
    {"foreach (var x in xs)", "O"},
    {"import java.util.List", "DV"},
    {"#include <stdio.h>", "D"},
    {"bool ok = a == b", "LV"},
    {"return a == b", "RLV"},
    {"Foo(a == b)", ""},
    {"for (int i = 0; i < n; i++)", "O"},
    {"using System.Text", "DV"},
    {"package demo.util", "DV"},
    {"#define MAX 10", "D"},
    {"public static int Add(int a, int b)", "F"},
    {"new Foo(1)", "F"},
    {"Foo(x)", ""},
    {"int x = Foo(1)", "V"},
    {"int x", "V"},
    {"int[] values", "V"},
    {"int[] values = new int[3]", ""},
    {"x y -= f(1)", ""},
    {"int _x = 1", ""},
    {"namespace global", "V"},
    {"", ""},
    {"if(x)", "L"},
    {" if (x)", ""},
    {"a b = c(d) == e", "LV"},
    {"a b(c = 1) += 2", "F"},
    {"a b(1.5)", "F"},
    {"a b(c.d)", ""},
    {"a <= b", ""},
    {"a[b] += c(d)", "V"},
    {"a[b(c)] = d", "F"},
};

TEST(Analysis, ClassifiesStatements) {
    for (const auto& [text, yes] : kClassifierRows) {
        std::string answers;
        if (DetectReturnDeclaration(text)) answers += 'R';
        if (DetectLogic(text)) answers += 'L';
        if (DetectLoop(text)) answers += 'O';
        if (DetectDefines(text)) answers += 'D';
        if (DetectFunctionDeclaration(text)) answers += 'F';
        if (DetectVariableDeclaration(text)) answers += 'V';
        EXPECT_EQ(answers, yes) << text;
    }
}

const std::pair<const char*, const char*> kNameRows[] = {
    {"void Main(string[] args)", "Main"},
    {"public static int Add(int a, int b)", "Add"},
    {"List<int> GetItems(int n)", "GetItems"},
    {"void *Alloc(int n)", "Alloc"},
    {"int F * *(int n)", "F"},
    {"Dictionary<K, V> Convert<T>(T x)", "Convert"},
    {"void F(int a = 5)", "F"},
    {"public static bool operator ==(A a, A b)", "=="},
    {"void Foo<T>(T x)", ""},
    {"Dictionary<K, V> Pair<A, B>(A a)", "B>"},
    {"void IFoo2.Bar()", ".Bar"},
    {"int x", "x"},
    {"Foo", "Foo"},
    {"void\tSpaced  ( int a )", "Spaced"},
    {"x 1.Foo<T>1.Bar<U", "1.Bar"},
};

TEST(Analysis, FindsFunctionNames) {
    for (const auto& [header, name] : kNameRows) EXPECT_EQ(functionName(header), name) << header;
}

// Texts of all lengths around a block's, which a '@' fills up; what follows them must not matter.
TEST(Analysis, ALookTellsTheSameAsAWalk) {
    const char* const rows[] = {"@",
                                "return @",
                                "@ b = c(d)",
                                "int @ = 1",
                                "int @(a, 1.5) => x",
                                "void A@ (b.c)",
                                "a@.b c",
                                "int a@ (b = \".\")",
                                "var a = '@'",
                                "x a@ += (b)",
                                "a@ -== b (c)",
                                "a<@ > b",
                                "a < = @",
                                "a[@] b",
                                "return9.@ a",
                                "class @ : b",
                                "struct @",
                                "public a@ == b",
                                "a @1.b",
                                "a @ =",
                                "a @ +=",
                                "",
                                "@ b .c",
                                "int @ c; d = 1",
                                "a@ +=\\",
                                "x a@ == (b)",
                                "a[@] == b",
                                "int b@ \"(\""};
    const std::string behind = "= =='\"class struct(.a\\" + std::string(128, '(');
    for (const std::string row : rows) {
        for (std::size_t size = 1; size < 140; size += size == 20 ? 25 : size == 70 ? 40 : 1) {
            std::string text = row;
            const std::size_t at = text.find('@');
            if (at != std::string::npos) text.replace(at, 1, std::string(size, 'w'));
            const std::string all = text + behind;
            FirstLook look;
            LookAt({all.data(), text.size()}, all.size(), look);
            EXPECT_TRUE(!look.asked || look.answers == AskParts(text)) << text;
            EXPECT_TRUE(look.asked || size > 20 || row.find('\"') != std::string::npos) << text;
            EXPECT_TRUE(look.mayHoldEquality || !Contains(text, "==")) << text;
            EXPECT_TRUE(look.mayHoldClass || !Contains(text, "class")) << text;
            EXPECT_TRUE(look.mayHoldStruct || !Contains(text, "struct")) << text;
            EXPECT_EQ(look.mayHoldParenthesis, Contains(text, "(")) << text;
            EXPECT_EQ(look.plain, text.find_first_of("'\"\\") == std::string::npos) << text;
            EXPECT_EQ(look.brief, text.size() <= 64) << text;
        }
    }
}

}  // namespace
