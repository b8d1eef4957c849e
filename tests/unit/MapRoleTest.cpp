#include "rows/MapRole.h"

#include <gtest/gtest.h>

#include <string>

#include "parsecs/forms/map/MapForm.h"

using namespace plugincs;

namespace {

// A letter for each node below the global namespace, in the order of MapRole.
std::string Roles(const std::string& source) {
    const FileRows file("f.cs", source);
    std::string roles;
    for (const Row& row : file.rows()) {
        const bool frame = row.id < 2 || row.kind == KindName::kPreprocessor;
        if (!frame) roles += "TFVBLCSKDYE"[static_cast<int>(RoleOf(row))];
    }
    return roles;
}

TEST(MapRole, IsWhatAPersonSeesInARow) {
    const struct {
        const char* source;
        const char* roles;
    } kRows[] = {
        {"namespace A { class B { } }", "TT"},
        {"public interface I { string Name { get; } }", "TVS"},
        {"class A { private struct B { int c; } enum D { E } int f; (int, int) F() { } }",
         "TTVTVVF"},
        {"class A { int Structure; int P { get { return 1; } } }", "TVVKS"},
        {"class A { void F() { G(); h = i; } }", "TFCS"},
        {"void F() { for (;;) { a; } while (b) { } if (c) d; }", "FLSLB"},
        {"void F() { lock (a) { b; } using (var c = D()) { e; } }", "FKSCS"},
        {"void F() { a = \"b(c)\"; d = 'e'; f = (g); return (h); }", "FSSSS"},
        {"void F() { a = \"\\\"b(\"; x = y.Z<int> (1); f += (a, b) => a; }", "FSCS"},
        {"void F() { a = nameof(b); c = typeof(d) == e.GetType(); }", "FSB"},
        {"using A;", "D"},
        {"return Is(a) == b; return Is(a);", "BC"},
        {"a; } b;", "SE"},
    };
    for (const auto& [source, roles] : kRows) EXPECT_EQ(Roles(source), roles) << source;
}

TEST(MapForm, ShowsStatementsWhileABrowserCan) {
    EXPECT_TRUE(ShowsStatements(10'000, 3'000'000));
    EXPECT_FALSE(ShowsStatements(10'001, 1));
    EXPECT_FALSE(ShowsStatements(1, 3'000'001));
}

}  // namespace
