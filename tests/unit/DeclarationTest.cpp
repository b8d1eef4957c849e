#include "rows/Declaration.h"

#include <gtest/gtest.h>

#include <string>

#include "rows/Bases.h"
#include "rows/FurtherNames.h"

using namespace plugincs;

namespace {

struct Row {
    const char* text;
    const char* declared;  // "what name" and, after "|", modifiers
};

// Texts that declare the same wherever they stand. A '{' at the end begins a block.
const Row kAnywhere[] = {
    {"namespace A.B", "namespace A.B"},
    {"public static partial class Gen<T> : Base<T>, I where T : class, new() {",
     "class Gen|public static partial"},
    {"readonly ref struct S {", "struct S|readonly ref"},
    {"public enum E : byte {", "enum E|public"},
    {"file interface I<in T, [A(\">\")] out U> {", "interface I|file"},
    {"record R(int A, string B = \"(\") : Base(A)", "record R"},
    {"public record struct P(int X)", "record P|public"},
    {"class Primary(int x, C c) : Base(x) {", "class Primary"},
    {"public delegate R Handler<T>(object sender, T e) where T : E", "delegate Handler|public"},
    {"delegate R F()", "delegate F"},
    {"record.Save(x)", ""},
    {"public void F() {", "method F|public"},
    {"public event EventHandler<E> Changed, Other", "event Changed|public"},
    {"internal int count", "field count|internal"},
    {"protected internal new A.B B {", "property B|protected internal new"},
    {"public static C operator +(C a, C b) {", "operator operator +|public static"},
    {"public static implicit operator List<int> (C c) =>",
     "conversion operator List<int>|public static"},
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
    {"x += delegate(int y) {", ""},
    {"var (a, b) = F()", ""},
    {"(a, b) = F()", ""},
    {"using B = A.C", ""},
    {"using var b = F()", ""},
    {"foreach (var x in y) {", ""},
    {"await foreach (var x in y) {", ""},
    {"unsafe {", ""},
    {"extension(string s) {", ""},
    {"1 a", ""},
    {"", ""},
};

// In the body of the type C.
const Row kMembers[] = {
    {"C(int x) {", "constructor C"},
    {"C(int x) : base(x)", "constructor C"},
    {"D(int x)", ""},
    {"D(int x) {", "constructor D"},
    {"static C() {", "constructor C|static"},
    {"N.C(int x)", ""},
    {"~C() {", "destructor ~C"},
    {"~@class() {", "destructor ~@class"},
    {"int x", "field x"},
    {"A.B<C>[] x, y = 1", "field x"},
    {"readonly C c = new C(1)", "field c|readonly"},
    {"new int Hidden", "field Hidden|new"},
    {"const int Max = 1", "field Max|const"},
    {"fixed byte buffer[16]", "field buffer|fixed"},
    {"delegate*<int, void> f", "field f"},
    {"public delegate* unmanaged[Cdecl]<int, void> F {", "property F|public"},
    {"Func<int> F = () => 1", "field F"},
    {"required Mode async", "field async|required"},
    {"string Name => name", "property Name"},
    {"int I.Count {", "property Count"},
    {"ref readonly int R {", "property R"},
    {"void F(int x)", "method F"},
    {"static async Task<Dictionary<int, (A, B[])>> Load<T>(int a = 1) where T : new() {",
     "method Load|static async"},
    {"int? Twice(int x) => 2 * x", "method Twice"},
    {"(int, string) Pair() {", "method Pair"},
    {"global::A.B[,][] Make(params int[] x)", "method Make"},
    {"void IList<int>.Add(int x) {", "method Add"},
    {"unsafe int* @class() {", "method class|unsafe"},
    {"void \xC3\x84() {", "method \xC3\x84"},
    {"int \\u0041b", "field \\u0041b"},
    {"T this[int i] {", "indexer this"},
    {"T I<T>.this[int i] =>", "indexer this"},
    {"event Action E {", "event E"},
    {"get {", ""},
    {"private set", ""},
    {"is Foo", ""},  // of a pattern that broken code has cut
    {"set => x = value", ""},
};

// In code, where local functions have bodies.
const Row kCode[] = {
    {"int F(int x) {", "local F"},
    {"static T Twice<T>(T x) => x", "local Twice|static"},
    {"void G<T>(T x) where T : class => x.H()", "local G"},
    {"extern static void Native()", "local Native|extern static"},
    {"F g(x)", ""},
    {"new Foo(x) {", ""},
    {"int x = 1", ""},
    {"int x {", ""},
    {"C(int x) {", ""},
    {"~C()", ""},
    {"T this[int i]", ""},
};

std::string Declared(std::string text, const Surroundings& around) {
    const bool opensBlock = text.ends_with(" {");
    if (opensBlock) text.resize(text.size() - 2);
    const Declaration found = ReadDeclaration(text, around, opensBlock);
    std::string declared(NameOf(found.what));
    if (!found.name.empty()) declared.append(" ").append(found.name);
    if (!found.modifiers.empty()) declared.append("|").append(found.modifiers);
    return declared;
}

TEST(Declaration, IsReadOffTheText) {
    const Surroundings type{Around::Type, "C"};
    for (const auto& [text, declared] : kAnywhere) {
        for (const Surroundings& around : {type, Surroundings{Around::File}, {Around::Code}}) {
            EXPECT_EQ(Declared(text, around), declared) << text;
        }
    }
    for (const auto& [text, declared] : kMembers) EXPECT_EQ(Declared(text, type), declared) << text;
    for (const auto& [text, declared] : kCode) {
        EXPECT_EQ(Declared(text, {Around::Code}), declared) << text;
        const std::string inValue = Declared(text, {Around::Value});
        EXPECT_EQ(inValue, "") << text;
    }
    EXPECT_EQ(Declared("@A = 1 << 2", {Around::Enum}), "enumerator A");
    EXPECT_EQ(Declared("", {Around::Enum}), "");
}

TEST(Declaration, MayGoOnWithFurtherNames) {
    const std::pair<const char*, const char*> rows[] = {
        {" = F(a, b), c = new D<E, F>(1, \",\") , @g, h[3]",
         "c=c = new D<E, F>(1, \",\")|g=@g|h=h[3]|"},
        {" = a < b", ""},
        {"", ""},
        {", 1, b.c", ""},
    };
    for (const auto& [rest, expected] : rows) {
        std::string names;
        for (const auto& [name, text] : FindFurtherNames(rest, 0)) {
            names.append(name).append("=").append(text).append("|");
        }
        EXPECT_EQ(names, expected) << rest;
    }
}

TEST(Declaration, TellsWhatATypeDerivesFrom) {
    const std::pair<const char*, const char*> rows[] = {
        {"class D<T>(int d = a ? b : c, string e = \"):\") : global::N.E<F, G>(d), H where T : I",
         "E H "},
        {"enum J : byte", "byte "},
        {"class K<T> where T : L", ""},
        {"struct M", ""},
        {"record N(int A) : @O (A) , P.Q<R.S>", "O Q "},
    };
    for (const auto& [header, expected] : rows) {
        std::string bases;
        for (const std::string_view base : BasesOf(header)) bases.append(base).append(" ");
        EXPECT_EQ(bases, expected) << header;
    }
}

}  // namespace
