#include "bench/SourceGenerator.h"

#include <array>
#include <random>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 16> kStatements = {
    "int total = 0;",
    "items.Add(new Item(name, 42));",
    "if (count == limit) { return cache[key]; }",
    "for (int i = 0; i < items.Count; i++) { sum += items[i].Weight * factor; }",
    "var result = items.Where(x => x.Price > 0).OrderBy(x => x.Name).ToList();",
    "Console.WriteLine(\"{0}: it's {1}\", name, value); // for the log",
    "/* kept for later: index++; */ index += 2;",
    "foreach (var entry in table) { Process(entry.Key, entry.Value); }",
    "string path = \"C:\\\\data\\\\\" + name + \".txt\";",
    "while (queue.Count > 0) { var next = queue.Dequeue(); Visit(next); }",
    "try { stream.Flush(); } catch (Exception e) { Report(e); throw; }",
    "return left.Value != right.Value ? left : right;",
    "char separator = ';'; Task<int> task = Load(path, separator);",
    "Dictionary<string, List<int>> index = new Dictionary<string, List<int>>();",
    "handler = (sender, args) => { Changed(sender, args); };",
    "throw new InvalidOperationException(\"no such entry\");",
};

constexpr std::array<std::string_view, 6> kMembers = {
    "private readonly List<string> names = new List<string>();",
    "public int Count { get { return count; } set { count = value; } }",
    "[Obsolete(\"use the other\")]\n        protected virtual string Name;",
    "#region Fields\n        private static double ratio = 1.5;\n        #endregion",
    "/// <summary>What is left; never negative.</summary>\n        public event Action Done;",
    "#if DEBUG\n        private int calls = 0;\n        #endif",
};

template <std::size_t N>
std::string_view Pick(const std::array<std::string_view, N>& choices, std::minstd_rand& random) {
    return choices[random() % N];
}

void AddMethod(std::string& source, std::minstd_rand& random) {
    const std::string number = std::to_string(random() % 1000);
    source.append("\n        public override int Compute").append(number);
    source.append("(string name, int limit = ").append(number).append(")\n        {\n");
    for (auto count = 3 + random() % 9; count > 0; --count) {
        source.append("            ").append(Pick(kStatements, random)).append("\n");
    }
    source.append("        }\n");
}

std::string Repeat(std::string_view head, std::string_view unit, std::size_t size) {
    std::string text(head);
    while (text.size() < size) text += unit;
    return text;
}

std::string DistinctOperands(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() < size; ++i) {
        text.append("#ifndef SYMBOL").append(std::to_string(i)).append("\na;\n#endif\n");
    }
    return text;
}

std::string CarriageReturns(std::size_t size) {
    std::string text;
    for (const char c : GenerateSource(size)) text.append(c == '\n' ? "\r\n" : std::string(1, c));
    return text;
}

}  // namespace

std::string GenerateSource(std::size_t size) {
    std::minstd_rand random(1);
    std::string source = "using System;\nusing System.Collections.Generic;\n";
    while (source.size() < size) {
        const std::string number = std::to_string(random() % 1000);
        source.append("\n/*\n * A part of the whole.\n */\nnamespace Company.Product")
            .append(number);
        source.append("\n{\n    public class Worker").append(number).append(" : Base\n    {\n");
        for (int member = 0; member < 20 && source.size() < size; ++member) {
            source.append("        ").append(Pick(kMembers, random)).append("\n");
            AddMethod(source, random);
        }
        source.append("    }\n}\n");
    }
    return source;
}

const std::vector<Shape>& HostileShapes() {
    static const std::vector<Shape> shapes = {
        {"open parenthesis, newlines", [](std::size_t n) { return Repeat("(", "\n", n); }},
        {"open parenthesis, #", [](std::size_t n) { return Repeat("(", "\n a#", n); }},
        {"open parenthesis, backslashes", [](std::size_t n) { return Repeat("(", "x\\\n", n); }},
        {"open quote", [](std::size_t n) { return Repeat("a = \"", "b\\\\c\n#d\n", n); }},
        {"open comment", [](std::size_t n) { return Repeat("/*", "*\n#\\/\n", n); }},
        {"unknown directive", [](std::size_t n) { return Repeat(";#unknown\n", "word\n", n); }},
        {"header of *", [](std::size_t n) { return Repeat("a b", "*", n) + "() {}"; }},
        {"header of :", [](std::size_t n) { return Repeat("class a", ":", n) + "{}"; }},
        {"header of <", [](std::size_t n) { return Repeat("a b", "<", n) + " == {}"; }},
        {"siblings", [](std::size_t n) { return Repeat("", "a;", n); }},
        {"levels", [](std::size_t n) { return Repeat("", "{", n); }},
        {"empty blocks", [](std::size_t n) { return Repeat("", "{}", n); }},
        {"distinct operands", DistinctOperands},
        {"carriage returns", CarriageReturns},
        {"one word", [](std::size_t n) { return Repeat("", "w", n) + ";"; }},
        {"attributes", [](std::size_t n) { return Repeat("", ";[", n); }},
        {"open attribute", [](std::size_t n) { return Repeat("[", "x;\n", n); }},
        {"runs of T", [](std::size_t n) { return Repeat("", "TTTTTx;", n); }},
        {"one run of T", [](std::size_t n) { return Repeat("x", "T", n); }},
        {"comments", [](std::size_t n) { return Repeat("", "/**/a//b\n", n); }},
        {"escapes", [](std::size_t n) { return Repeat("a = '", "\\'", n) + "';"; }},
        {"empty literals", [](std::size_t n) { return Repeat("", "\"\"''", n) + ";"; }},
        {"blank lines", [](std::size_t n) { return Repeat("", " \n", n); }},
        {"open sections", [](std::size_t n) { return Repeat("", "#ifndef A\n", n); }},
        {"regions in a line", [](std::size_t n) { return Repeat("", ";#region\n", n); }},
        {"comparisons", [](std::size_t n) { return Repeat("a b(", "=d.e", n) + ") == c;"; }},
        {"classes in classes", [](std::size_t n) { return Repeat("", "class a : b {", n); }},
        {"bytes above 127", [](std::size_t n) { return Repeat("", "\xC3\xA4\xFF;", n); }},
    };
    return shapes;
}
