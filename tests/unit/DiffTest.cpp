#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "parsecs/diff/DiffLines.h"
#include "parsecs/diff/Matching.h"
#include "parsecs/diff/Moves.h"
#include "parsecs/diff/TextHash.h"

using namespace plugincs;

namespace {

using Files = std::vector<std::unique_ptr<DeclaredFile>>;

// The files of a state, parted by form feeds.
Files Listed(std::string text, HashPoint point) {
    Files files;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\f', begin), text.size());
        auto file = std::make_unique<DeclaredFile>();
        file->path = std::to_string(files.size() + 1);
        file->pair = files.size();
        ListDeclared(FileRows(file->path, text.substr(begin, end - begin)), point, *file);
        files.push_back(std::move(file));
        begin = end + 1;
    }
    return files;
}

std::vector<Change> Changes(const std::string& old, const std::string& now) {
    const HashPoint point;
    const Files before = Listed(old, point);
    const Files after = Listed(now, point);
    std::vector<Change> changes;
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        Match(before[i]->declared.front(), after[i]->declared.front(), changes);
    }
    FindMoves(before, after, changes);
    Sort(changes);
    return changes;
}

// "body method A.F, added class B".
std::string Told(const std::string& old, const std::string& now) {
    std::string told;
    for (const Change& change : Changes(old, now)) {
        const ChangedPlace& place = change.now ? *change.now : *change.old;
        told.append(told.empty() ? "" : ", ").append(NameOf(change.kind)).append(" ");
        told.append(change.declares);
        const std::string dot = place.scope.empty() || place.name.empty() ? "" : ".";
        told.append(place.name.empty() ? "" : " ");
        told.append(place.scope).append(dot).append(place.name);
    }
    return told;
}

struct Row3 {
    const char* old;
    const char* now;
    const char* told;
};

// Between the braces of a class C.
const Row3 kMembers[] = {
    // What is no change.
    {"void F() { a(b); } int x;",
     "int x; // c\r\n#region R\nvoid F ( )\t{ a(/**/ b\xC2\xA0) ; }\n#endregion", ""},
    {"int a, b = 1;", "int a; int b = 1;", ""},
    {"[A] [B(1)] void F() { }", "[A]\n[B ( 1 )]\nvoid F() { }", ""},
    {"#  if X // c\nint a;\n#endif", "#if   X\nint a;\n#endif", ""},
    {"List<List<int>> F() => a;", "List<List<int> > F() => a;", ""},
    // What is a body.
    {"void F() { a(); }", "void F() { b(); }", "body method C.F"},
    {"void F() { a(\" \"); }", "void F() { a(\"  \"); }", "body method C.F"},
    {"void F() { if (a) { b(); } c(); }", "void F() { if (a) { b(); c(); } }", "body method C.F"},
    {"void F() { x = a - -b; }", "void F() { x = a--b; }", "body method C.F"},
    {"void F() { a(); }", "void F() { a();; }", "body method C.F"},
    {"abstract void F();", "abstract void F() { }", "body method C.F"},
    {"int F() => 1;", "int F() => 2;", "body method C.F"},
    {"int F() => 1;", "int F() { return 1; }", "body method C.F"},
    {"C() : base(1) { }", "C() : base(2) { }", "body constructor C.C"},
    {"int P => 1;", "int P => 2;", "body property C.P"},
    {"int P { get; } = 1;", "int P { get; } = 2;", "body property C.P"},
    {"int P { get; }", "int P { get; set; }", "body property C.P"},
    {"int P { [A] get; }", "int P { [B] get; }", "body property C.P"},
    {"int a = 1, b = 2;", "int a = 1, b = 3;", "body field C.b"},
    {"int a = 1, b;", "int a = 2, b;", "body field C.a"},
    {"int[] a = { 1 }, b = { 2 };", "int[] a = { 1 }, b = { 3 };", "body field C.b"},
    {"Action a = () => { b(); void L() { c(); } };", "Action a = () => { b(); void L() { d(); } };",
     "body local C.a.L"},
    {"void F() { a(); void L() { b(); } }", "void F() { a(); void L() { c(); } }",
     "body local C.F.L"},
    {"void F() { a(); void L() { b(); } }", "void F() { d(); void L() { b(); } }",
     "body method C.F"},
    // Directives are of what they stand in, as are branches that no row shows.
    {"void F() {\n#if A\na();\n#endif\n}", "void F() {\n#if B\na();\n#endif\n}", "body method C.F"},
    {"\n#if A\nint a;\n#endif\n", "\n#if B\nint a;\n#endif\n", "body class C"},
    {"void F() {\n#if A\nif (a) {\n#else\nif (b) {\n#endif\n} }",
     "void F() {\n#if A\nif (a) {\n#else\nif (c) {\n#endif\n} }", "body method C.F"},
    {"\n#if A\nvoid F() { a(); }\n#else\nvoid F() { b(); }\n#endif\n",
     "\n#if A\nvoid F() { a(); }\n#else\nvoid F() { c(); }\n#endif\n", "body method C.F"},
    // What is a signature.
    {"void F() { }", "[A] void F() { }", "signature method C.F"},
    {"[A(1)] int F() { }", "[A(2)] int F() { }", "signature method C.F"},
    {"void F() { }", "public void F() { }", "signature method C.F"},
    {"void F(int a) { a(); }", "void F(long a, int b) { c(); }",
     "signature method C.F, body method C.F"},
    {"void F(int a = 1);", "void F(int b = 2);", "signature method C.F"},
    {"void F<T>() where T : A { }", "void F<T>() where T : B { }", "signature method C.F"},
    {"C(int a) { b(); }", "C(long a) { b(); }", "signature constructor C.C"},
    {"int a, b;", "long a, b;", "signature field C.a, signature field C.b"},
    {"int a;", "int a { get; }", "signature property C.a, body property C.a"},
    {"event A E;", "event B E;", "signature event C.E"},
    {"class D : E { void F() { } }", "struct D : G { void F() { } }", "signature struct C.D"},
    // Overloads are told apart by the types of their parameters.
    {"void F(int a) { a(); } void F(string a) { b(); }",
     "void F(string b) { c(); } void F(int a) { a(); }", "signature method C.F, body method C.F"},
    {"void F(int a) { a(); } void F(string a) { b(); }",
     "void F(int a) { a(); } void F(long a) { b(); }", "signature method C.F"},
    {"void F(int a) { a(); } void F(string a) { b(); }",
     "void F(int a) { a(); } void F(long a) { c(); }", "removed method C.F, added method C.F"},
    {"void F(Map<A, B> a = c < d, int b) { }",
     "void F(Map<A, B> a = c < d, int b) { } void F(Map<A> a) { }", "added method C.F"},
    {"void F([X] ref int @a) { } void F(int a) { }", "void F(ref int b) { } void F(int a) { x(); }",
     "signature method C.F, body method C.F"},
    {"void I.F() { a(); } void J.F() { b(); }", "void J.F() { c(); } void I.F() { a(); }",
     "body method C.F"},
    {"void F() { } void F<T>() { }", "void F() { a(); } void F<T>() { }", "body method C.F"},
    {"static C() { a(); } C() { b(); }", "C() { b(); } static C() { c(); }",
     "body constructor C.C"},
    {"int this[int a] => 1; int this[string a] => 2;",
     "int this[int a] => 1; int this[string a] => 3;", "body indexer C.this"},
    {"class D { int a; } class D<T> { int a; }", "class D<T> { int b = 1; } class D { int a; }",
     "removed field C.D.a, added field C.D.b"},
    // Added, removed, renamed.
    {"void F() { }", "", "removed method C.F"},
    {"", "void F() { }", "added method C.F"},
    {"int a, b;", "int b;", "removed field C.a"},
    {"int a;", "int b;", "removed field C.a, added field C.b"},
    {"void F() { a(); }", "void G() { a(); }", "renamed method C.G"},
    {"void F() { a(); F(); }", "void G() { a(); G(); }", "renamed method C.G"},
    {"void F() { }", "void G() { }", "removed method C.F, added method C.G"},
    {"void F() { a(); }", "void G() { b(); }", "removed method C.F, added method C.G"},
    {"void F() { a(); }", "void G(int b) { a(); }", "removed method C.F, added method C.G"},
    {"void F() { a(); } void G() { a(); }", "void H() { a(); }",
     "removed method C.F, removed method C.G, added method C.H"},
    {"class D { D() { } D F() { return new D(); } }",
     "class E { E() { } E F() { return new E(); } }", "renamed class C.E"},
    {"int P { get { return a; } }", "int Q { get { return a; } }", "renamed property C.Q"},
    // Moved.
    {"class D { int F() { } } class E { }", "class D { } class E { int F() { } }",
     "moved method C.E.F"},
    {"class D { int a; } class E { }", "class D { } class E { int a; }",
     "removed field C.D.a, added field C.E.a"},
    {"class D { int F() { } } class E { int F() { } } class G { }",
     "class D { } class E { } class G { int F() { } }",
     "removed method C.D.F, removed method C.E.F, added method C.G.F"},
};

TEST(Diff, TellsWhatHappenedToMembers) {
    for (const auto& [old, now, told] : kMembers) {
        const auto around = [](std::string members) { return "class C {" + members + "}"; };
        EXPECT_EQ(Told(around(old), around(now)), told) << old << "\n" << now;
    }
}

const Row3 kFiles[] = {
    {"", "", ""},
    {"using A;", "using B;", "body file"},
    {"a(); void L() { b(); }", "a(); void L() { c(); }", "body local L"},
    {"[assembly: A]", "[assembly: B]", "body file"},
    {"namespace N { using A; class C { } }", "using A; namespace N; class C { }", "body file"},
    {"namespace N { class C { } class D { int a; } }",
     "namespace N; class D { int a; } class C { }", ""},
    {"namespace N { class C { void F() { } } }", "namespace M { class C { void F() { } } }",
     "moved class M.C"},
    {"enum E { A, B }", "enum E { B, A, }", ""},
    {"enum E { A, B }", "enum E { A = 1, C }",
     "removed enumerator E.B, body enumerator E.A, added enumerator E.C"},
    {"record R(int A);", "record R(int A) { void F() { } }", "added method R.F"},
    {"record R(int A);", "record R(long A);", "signature record R"},
    // Whatever stands behind the end of the scan is the file's.
    {"class C { } } } void F() { a(); }", "class C { } } } void F() { b(); }", "body file"},
    // From file to file, and from part to part.
    {"class C { void F() { a(); } }\fclass D { }", "\fclass D { } class C { void F() { a(); } }",
     "moved class C"},
    {"class C { void F() { a(); } void G() { b(); } }\f",
     "\fclass C { void F() { a(); } void G() { c(); } }", "moved class C, body method C.G"},
    {"class C { void F() { a(); } }\f", "\fclass C { void F() { b(); } }",
     "removed class C, removed method C.F, added class C, added method C.F"},
    {"partial class C { void F() { } }\fpartial class C { }",
     "partial class C { }\fpartial class C { void F() { } }", "moved method C.F"},
    {"partial class C { int F; }\fpartial class C { }",
     "partial class C { }\fpartial class C { int F; }", "moved field C.F"},
    {"partial class C { void F() { } } partial class C { }",
     "partial class C { } partial class C { void F() { } }", ""},
    {"partial class C { void F() { a(); } }\fpartial class C { void G() { a(); } }",
     "partial class C { void F() { b(); } }\fpartial class C { void G() { a(); } }",
     "body method C.F"},
};

TEST(Diff, TellsWhatHappenedInFiles) {
    for (const auto& [old, now, told] : kFiles)
        EXPECT_EQ(Told(old, now), told) << old << "\n" << now;
}

// Each of these could be read as another sequence of pieces.
TEST(Diff, HashesPiecesApart) {
    const HashPoint point;
    const auto hash = [&point](std::vector<std::string_view> pieces) {
        TextHash whole(point);
        for (const std::string_view piece : pieces) whole.Add(piece);
        return whole.value();
    };
    EXPECT_EQ(hash({"1234567", "8"}), hash({"1234567", "8"}));
    EXPECT_NE(hash({"1234567", "8"}), hash({"12345678"}));
    EXPECT_NE(hash({"1234567", "8"}), hash({"123456", "78"}));
    EXPECT_NE(hash({std::string_view("\0a", 2)}), hash({"a"}));
    EXPECT_NE(hash({"a", ""}), hash({"a"}));
}

TEST(Diff, ShowsPlaces) {
    const struct {
        Change change;
        const char* line;
    } rows[] = {
        {{ChangeKind::Added, "class", {}, ChangedPlace{"N", "C", "a.cs", 1, 2}},
         "added      class        N.C  a.cs:1-2\n"},
        {{ChangeKind::Removed, "method", ChangedPlace{"", "F\n", "a\x1B.cs", 3, 3}, {}},
         "removed    method       F?  a?.cs:3\n"},
        {{ChangeKind::Body, "enumerator", ChangedPlace{"E", "A", "a.cs", 1, 1},
          ChangedPlace{"E", "A", "a.cs", 1, 1}},
         "body       enumerator   E.A  a.cs:1\n"},
        {{ChangeKind::Renamed, "method", ChangedPlace{"C", "F", "a.cs", 1, 2},
          ChangedPlace{"C", "G", "a.cs", 3, 4}},
         "renamed    method       C.G  a.cs:3-4  (was C.F :1-2)\n"},
        {{ChangeKind::Moved, "file", ChangedPlace{"", "", "a.cs", 0, 0},
          ChangedPlace{"", "", "b.cs", 1, 4}},
         "moved      file         b.cs:1-4  (was a.cs)\n"},
    };
    for (const auto& [change, line] : rows) {
        std::string out;
        AppendDiffLine(change, false, out);
        EXPECT_EQ(out, line);
    }
}

}  // namespace
