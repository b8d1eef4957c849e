#include "tree/Scanner.h"

#include <gtest/gtest.h>

#include "tests/support/TreeDump.h"
#include "tree/Parse.h"

using namespace plugincs;

namespace {

struct Row {
    const char* source;
    const char* tree;  // the children of the "namespace global" node, then after "|" its siblings
    bool declarationMode = true;
};

const Row kRows[] = {
    {"", ""},
    {"namespace N {\nclass A {\nint x;\nvoid F() {\nif (x == 1) { x = 2; }\n}\n}\n}",
     "define@0[namespace N]{define@0[class A]{line@3[int x] container@4[void F()]"
     "{container@5[if (x == 1)]{line@5[x = 2]}}}}"},
    {"for (i = 0; i < n; i++) x++;", "line@1[for (i = 0; i < n; i++) x++]"},
    {"int f() { return 1 }", "container@1[int f()]"},
    {"struct S { int a; };\nvoid F() {}",
     "define@1[struct S]{line@1[int a]} container@2[void F()]"},
    {"struct S { int a; } s;\nvoid F() {}",
     "define@1[struct S]{line@1[int a]} line@1[s] define@2[void F()]"},
    {"void F(struct S s) {} class construct {} void G() {}",
     "container@1[void F(struct S s)] define@1[class construct] define@1[void G()]"},
    {"a {} ;", "define@0[a] line@1[]"},
    {"f(x => { a(); b(); });", "container@1[f(x =>] line@1[)]"},
    {"f()); a; (b; c;", "line@1[f()); a; (b] line@1[c]"},
    {"s = \"{;\\\"}\n\" + ';' + '\\'' + '\\\\';\nt;",
     "line@1[s = \"{;\\\"} \" + ';' + '\\'' + '\\\\'] line@2[t]"},
    {"a = \"no end; { }\n", ""},
    {"a \\ \nb;\nc;", "line@2[a \\ b] line@3[c]"},
    {"a \\ b\nc d;e\\\nf;", "line@2[a \\ bc d] line@3[e\\f]"},
    {"a '\\ '\nb;", "line@2[a '\\ 'b]"},
    {"x # y; #include z\nz;", "line@1[x # y] define@2[#include z] line@2[z]"},
    {"struct \"x\" {} void F() {}", "container@1[struct \"x\"] container@1[void F()]"},
    {"[A] class B { [X(1)] int y; x = a[1]; } ({[Z]{",
     "container@1[class B]{line@1[int y] line@1[x = a[1]]} container@1[(]{container@1[[Z]]}",
     false},
    {"[A] class B { x = a[1]; }", "define@0[[A] class B]{line@1[x = a[1]]}"},
    {"[A \"k;\" ( { b; }) ; ] c;", "container@1[\"k;\"] line@1[c]", false},
    {"#if A\nx;\n#else\ny; #region B\n#endregion\n#elif C\n#endif\nz;",
     "define@2[#if A]{line@2[x]} define@4[#else]{line@4[y] define@5[#region B]} define@7[#elif C] "
     "line@8[z]"},
    {"#ifdef A\\ \n  B\n;#define X 1;\n#other\na;",
     "define@3[#ifdef A\\ B]{line@3[#define X 1] line@5[#other a]}"},
    {"#x {\n{ #error 2\n} #undef X\n} b {",
     "container@1[#x]{container@2[]{define@3[#error 2]} define@4[#undef X]} define@0[b]"},
    {"{ #if A\n} x; #endif\ny { #define B\n}",
     "define@0[]{define@2[#if A] line@2[x]} define@0[y]{define@4[#define B]}"},
    {"a #if\n; '#'; (#if\n);", "line@2[a #if] line@2['#'] line@3[(#if )]"},
    {"}\na; b;", "|error: NULL parent branch@2[a]"},
    {"} x }", "|error: NULL parent branch@1[x]"},
    {"} f() { a; } b;", "|container@1[f()]{line@1[a]} error: NULL parent branch@1[b]"},
};

struct Parsed {
    explicit Parsed(const Row& row) : parse("", row.source, Traces(stdout)) {
        ScanState scan(parse.text, row.declarationMode, parse.root);
        ScanText(scan);
    }

    Parse parse;
};

TEST(Scanner, BuildsTheTree) {
    for (const Row& row : kRows) {
        testing::internal::CaptureStdout();
        const Parsed parsed(row);
        const std::string message = testing::internal::GetCapturedStdout();
        const ObjectBranch& global = *parsed.parse.root.children.first;
        const std::string beside = Dump(global.nextSibling);
        const std::string tree = Dump(global.children.first) + (beside.empty() ? "" : "|" + beside);
        EXPECT_EQ(tree, row.tree) << row.source;
        EXPECT_EQ(message.empty(), beside.find("error") == std::string::npos) << row.source;
    }
}

TEST(Scanner, CountsEveryNodeButTheGlobalOne) {
    const Parsed parsed(kRows[1]);
    EXPECT_EQ(parsed.parse.objectCount, 6);
    EXPECT_EQ(parsed.parse.nextId, 8);
    testing::internal::CaptureStdout();
    const Parsed stopped({"} a;", ""});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "zero children. This is not correct.");
    EXPECT_EQ(stopped.parse.root.children.last->nodeID, 3)
        << "the discarded statement has taken id 2";
    EXPECT_EQ(stopped.parse.objectCount, 2);
}

std::string Order(const ObjectBranch& top) {
    std::vector<ObjectBranch> list;
    AddObjectToVector(&top, &list);
    std::string order;
    for (const ObjectBranch& record : list) order += record.contents;
    return order;
}

TEST(Tree, FlattensAndFreesInOrder) {
    Parse parse("", "", Traces(nullptr));
    ObjectBranch& root = parse.root;
    root.contents = "R";
    for (const char* name : {"A", "D"}) AddChild(root)->contents = name;
    for (const char* name : {"B", "C"}) AddChild(*root.children.first)->contents = name;
    EXPECT_EQ(Order(root), "RABCD");
    // A walk over a copy visits the same subtree, and ends at its end.
    ObjectBranch copy = *root.children.first;
    EXPECT_EQ(Order(copy), "ABC");
    FreeChildren(&copy);
    EXPECT_EQ(Order(root), "RABCD");
    // Freeing one child's subtree leaves its siblings, and more can be appended.
    FreeChildren(root.children.first);
    AddChild(root)->contents = "E";
    EXPECT_EQ(Order(root), "RADE");
    FreeChildren(&root);
    EXPECT_TRUE(root.children.empty());
}

}  // namespace
