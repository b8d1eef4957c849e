#include <gtest/gtest.h>

#include "output/JsonRecords.h"
#include "text/StringHelpers.h"

using namespace plugincs;

namespace {

struct Row {
    const char* kind;
    BranchType type;
    const char* contents;
    const char* parentKind;
    const char* result;  // kind|contents|simple name, and "|V" with the variable tag
};

const Row kRows[] = {
    {"define", BranchType::Define, "class A : B", "class", "class|A|"},
    {"define", BranchType::Define, "partial subclasses", "line", "class|subclasses|"},
    {"classvar", BranchType::ClassVar, "class A", "class", "classvar|class A||V"},
    {"class", BranchType::Class, "var x = classes: if (y)", "line", "class|classe|"},
    {"class", BranchType::Class, "Outer::if", "line", "class|Outer|"},
    {"class", BranchType::Class, "class if", "line", "logic|if|"},
    {"line", BranchType::Line, "else if (f(x))", "line", "logic|else if (f(x))|"},
    {"line", BranchType::Line, "using a == b", "class", "logic|using a == b|"},
    {"line", BranchType::Line, "using System", "namespace", "define|using System|"},
    {"line", BranchType::Line, "using System", "class", "define|using System|"},
    {"container", BranchType::Container, "using (x y)", "define", "container|using (x y)|"},
    {"container", BranchType::Container, "for each (x)", "line", "loop|for each (x)|"},
    {"preprocessor", BranchType::Preprocessor, "A b", "filepath", "preprocessor|A b|"},
    {"preprocessor", BranchType::Preprocessor, "if A", "filepath", "logic|if A|"},
    {"preprocessor", BranchType::Preprocessor, "using A", "filepath", "preprocessor|using A|"},
    {"container", BranchType::Container, "int F(int a = 1)", "class",
     "function|int F(int a = 1)|F"},
    {"line", BranchType::Line, "int x = 5", "class", "classvar|int x = 5||V"},
    {"line", BranchType::Line, "int x = 5", "classvar", "line|int x = 5||V"},
    {"define", BranchType::Define, "int x", "define", "line|int x||V"},
    {"namespace", BranchType::Filepath, "namespace global", "filepath",
     "namespace|namespace global|"},
    {"container", BranchType::Container, "f(x =>", "line", "container|f(x =>|"},
};

TEST(Classification, GoesThroughItsStepsInOrder) {
    for (const Row& row : kRows) {
        ObjectBranch parent;
        parent.branchTypeAsString = row.parentKind;
        ObjectBranch node;
        node.parent = &parent;
        node.branchTypeAsString = row.kind;
        node.branchType = row.type;
        node.contents = row.contents;
        const Record record = ClassifyRecord(node);
        std::string result(record.kind);
        result.append("|").append(record.contents).append("|").append(record.simpleFunctionName);
        if (record.tags == "\n      \"variable\"\n") result += "|V";
        EXPECT_EQ(result, row.result) << row.contents;
    }
}

TEST(Classification, LeavesTheRootAlone) {
    ObjectBranch root;
    root.branchTypeAsString = "filepath";
    root.contents = "if x.cs";
    root.simpleFunctionName = "F";
    EXPECT_EQ(ClassifyRecord(root).kind, "filepath");
    EXPECT_EQ(ClassifyRecord(root).simpleFunctionName, "F");
}

// What records share depends on the kind, the tags and the path, and nothing else.
TEST(Classification, RecordsShowTheirOwnKindTagsAndPath) {
    const std::vector<std::vector<std::string_view>> rows = {
        {std::string_view(), std::string_view(), "a'b"},
        {"", "", "c"},
        {"line", "", "c"},
        {"line", "\"x\"", "c"},
        {"", "", "c"}};
    TextBuffer text(1);
    JsonRecords records(text);
    for (const auto& row : rows) {
        ObjectBranch node;
        node.branchTypeAsString = row[0];
        node.tags = row[1];
        node.filePath = row[2];
        const std::size_t before = text.View().size();
        records.Add(ClassifyRecord(node));
        std::string path(row[2]);
        const std::string expected = "\"branchTypeAsString\": \"" + std::string(row[0]) +
                                     "\",\n    \"filePath\": \"" + EscapeString(path) +
                                     "\",\n    \"tags\": [" + std::string(row[1]) + "],\n";
        EXPECT_TRUE(Contains(text.View().substr(before), expected)) << expected;
    }
}

}  // namespace
