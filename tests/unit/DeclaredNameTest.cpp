#include "parsecs/rows/DeclaredName.h"

#include <gtest/gtest.h>

#include "parsecs/rows/ParsedFile.h"

namespace {

struct Named {
    const char* text;
    const char* name;
};

const Named kAnywhere[] = {
    {"namespace A.B", "A.B"},
    {"public static partial class Gen<T> : Base<T>, I where T : class, new()", "Gen"},
    {"readonly ref struct S", "S"},
    {"public enum E : byte", "E"},
    {"file interface I<in T, out U>", "I"},
    {"record R(int A, string B = \"(\") : Base(A)", "R"},
    {"public record struct P(int X)", "P"},
    {"class Primary(int x, C c) : Base(x)", "Primary"},
    {"public delegate R Handler<T>(object sender, T e) where T : E", "Handler"},
    {"record.Save(x)", ""},
    {"public void F()", "F"},
    {"static async Task<Dictionary<int, (A, B[])>> Load<T>(int a = 1) where T : new()", "Load"},
    {"int? Twice(int x) => 2 * x", "Twice"},
    {"(int, string) Pair()", "Pair"},
    {"global::A.B[,][] Make(params int[] x)", "Make"},
    {"void IList<int>.Add(int x)", "Add"},
    {"public C(int x) : base(x)", "C"},
    {"public static C operator +(C a, C b)", "operator +"},
    {"public static implicit operator List<int> (C c)", "operator List<int>"},
    {"unsafe int* @class()", "class"},
    {"public int count", "count"},
    {"public new A.B B", "B"},
    {"public event EventHandler<E> Changed", "Changed"},
    {"), \"]\")] public void G()", "G"},
    {")] public string S = \"]\"", "S"},
    {") .Then(x)", ""},
    {"F(x)", ""},
    {"a.F<int>(x)", ""},
    {"a?.b[1]", ""},
    {"return F(x)", ""},
    {"throw new E(x)", ""},
    {"await F(x)", ""},
    {"yield return F(x)", ""},
    {"else F(x)", ""},
    {"case A a: F(x)", ""},
    {"label: F g(x)", ""},
    {"a ? b : c", ""},
    {"a < b && c > d", ""},
    {"a[1] = b", ""},
    {"this[1] = b", ""},
    {"*F(x) = b", ""},
    {"x += delegate(int y)", ""},
    {"var (a, b) = F()", ""},
    {"(a, b) = F()", ""},
    {"using B = A.C", ""},
    {"using var b = F()", ""},
    {"foreach (var x in y)", ""},
    {"unsafe", ""},
    {"#region int x", ""},
    {"1 a", ""},
    {"", ""},
};

// Names in the body of the type C; in code none of these texts declares one.
const Named kMembers[] = {
    {"C(int x)", "C"},
    {"D(int x)", ""},
    {"static C()", "C"},
    {"N.C(int x)", ""},
    {"~C()", "~C"},
    {"int x", "x"},
    {"A.B<C>[] x, y = 1", "x"},
    {"readonly C c = new C(1)", "c"},
    {"new int Hidden", "Hidden"},
    {"const int Max = 1", "Max"},
    {"fixed byte buffer[16]", "buffer"},
    {"delegate*<int, void> f", "f"},
    {"[Attribute(\"\\\"]\", 1)] int x", "x"},
    {"string Name => name", "Name"},
    {"int I.Count", "Count"},
    {"Func<int> F = () => 1", "F"},
    {"required Mode async", "async"},
    {"get", ""},
    {"private set", ""},
    {"set => x = value", ""},
    {"= new C()", ""},
};

TEST(DeclaredName, IsReadOffTheText) {
    const Scope type{true, "C"};
    for (const auto& [text, name] : kAnywhere) {
        EXPECT_EQ(DeclaredBy(text, {}).name, name) << text;
        EXPECT_EQ(DeclaredBy(text, type).name, name) << text;
    }
    for (const auto& [text, name] : kMembers) {
        EXPECT_EQ(DeclaredBy(text, type).name, name) << text;
        EXPECT_EQ(DeclaredBy(text, {}).name, "") << text;
    }
    EXPECT_EQ(DeclaredBy("T this[int i]", type).name, "this");
    EXPECT_EQ(DeclaredBy("fixed (byte* p = a) F g(p)", {}).name, "");
    EXPECT_EQ(DeclaredBy("this.x = 1", type).name, "");
}

TEST(DeclaredName, TellsMembersFromLocalVariables) {
    const ParsedFile file({"a.cs",
                           "int a; namespace N { class A { int b; A() { int c; } int P { get; }\n"
                           "struct B { B() { int d; int L() { } B(); } ;#region x\nint e;\n"
                           "} } int f; A(); B(); } }"});
    std::string names;
    for (const Row& row : file.rows()) names.append(row.name).append(row.name.empty() ? "" : " ");
    EXPECT_EQ(names, "N A b A P B B L e f A ");
}

}  // namespace
