#include "parsecs/rows/RowCodec.h"

#include <tuple>

#include "tests/support/Corpus.h"
#include "tests/support/QuietStdout.h"

namespace {

auto Fields(const Row& row) {
    return std::tuple(row.id, row.parent, row.last, row.depth, row.kind, row.name, row.text,
                      row.declares, row.begin.line, row.begin.column, row.end.line, row.end.column);
}

TEST(RowCodec, GivesBackEveryRow) {
    std::string source = ReadText(SAMPLE) + "\n\n";
    source.append(300, ' ').append("f(\"").append(20000, '\xFF').append("\");");
    source.append(70000, '{');
    const QuietStdout quiet;
    for (const std::string& text : {source, ReadText(SAMPLE) + "}}}", std::string()}) {
        const ParsedFile file("some.cs", text);
        std::string bytes;
        EncodeRows(file, bytes);
        ASSERT_FALSE(bytes.empty());
        RowReader reader(bytes);
        Row row;
        for (const Row& expected : file.rows()) {
            ASSERT_TRUE(reader.Next(row));
            ASSERT_EQ(Fields(row), Fields(expected));
        }
        EXPECT_FALSE(reader.Next(row));
    }
}

}  // namespace
