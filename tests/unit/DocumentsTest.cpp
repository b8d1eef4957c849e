// The examples of docs/records.md and docs/rows.md, against the module and the program.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Corpus.h"
#include "tests/support/Module.h"

namespace {

std::string Trimmed(const std::string& text) {
    return text.substr(0, text.find_last_not_of(" \n") + 1);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// A fenced block of a document: what stands after its ```, and its lines.
struct Fence {
    std::string kind;    // the first word
    std::string option;  // the others
    std::string body;
};

std::vector<Fence> FencesOf(const std::string& document) {
    std::istringstream lines(ReadText(std::filesystem::path(DOCS) / document));
    std::vector<Fence> fences;
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("```")) {
            if (inside) fences.back().body += line + '\n';
            continue;
        }
        inside = !inside;
        if (!inside) continue;
        const std::size_t blank = std::min(line.find(' '), line.size());
        fences.push_back({line.substr(3, blank - 3), line.substr(blank), ""});
    }
    EXPECT_FALSE(inside) << document;
    return fences;
}

// A source, and beside it what comes of it in short.
struct Example {
    explicit Example(const Fence& fence) {
        std::istringstream lines(fence.body);
        for (std::string line; std::getline(lines, line);) {
            line += ' ';
            const std::size_t bar = line.find(" | ");
            EXPECT_NE(bar, std::string::npos) << "nothing beside " << line;
            source += Trimmed(line.substr(0, bar)) + '\n';
            inShort += Trimmed(line.substr(std::min(bar + 3, line.size()))) + '\n';
        }
        source = Trimmed(source);
        inShort = Trimmed(inShort);
        if (fence.option != " unended") source += '\n';
        if (fence.option == " crlf") source = Replaced(source, "\n", "\r\n");
        if (fence.option.ends_with(".cs")) name = fence.option.substr(1);
        const std::filesystem::path path = WriteTemporary(name, source);
        std::filesystem::current_path(path.parent_path());
    }

    std::string source;
    std::string inShort;
    std::string name = "a.cs";
};

using Function = std::function<std::string(const std::string&)>;

// Compares each example's text: in short, and with the pieces of it that are shown after it.
void Check(const std::string& document, const std::string& piece, const Function& textOf,
           const Function& inShort) {
    std::string text;
    int examples = 0;
    for (const Fence& fence : FencesOf(document + ".md")) {
        if (fence.kind == piece) {
            const std::string shown = Replaced(Replaced(fence.body, "·", " "), "\\\n", "");
            EXPECT_NE(text.find(shown), std::string::npos) << shown;
            continue;
        }
        ASSERT_EQ(fence.kind, document) << "none of ours: " << fence.body;
        const Example example(fence);
        text = textOf(example.name);
        EXPECT_EQ(Trimmed(inShort(text)), example.inShort) << example.source;
        ++examples;
    }
    EXPECT_GT(examples, 0) << document;
}

std::string Between(const std::string& text, const std::string& before, const std::string& behind) {
    const std::size_t at = text.find(before) + before.size();
    return text.substr(at, text.find(behind, at) - at);
}

std::string RecordsInShort(const std::string& text) {
    if (text == "none") return "no records";
    std::string lines;
    std::map<int, int> depths{{-1, -1}};
    std::size_t end = 0;
    for (std::size_t at = 0; (at = text.find("  {\n", end)) != std::string::npos;) {
        end = text.find("\n  }", at);
        const std::string record = text.substr(at, end - at);
        const int id = std::stoi(Between(record, "\"nodeID\":  ", ","));
        const int depth = depths[std::stoi(Between(record, "\"parentID\": ", ","))] + 1;
        const std::string kind = Between(record, "\"branchTypeAsString\": \"", "\",\n");
        const std::string contents = Between(record, "\"contents\": \"", "\",\n    \"simple");
        const std::string name = Between(record, "\"simpleFunctionName\": \"", "\",\n");
        depths[id] = depth;
        if (id == 1 || (id == 0 && kind == "filepath")) continue;
        if (kind == "preprocessor" && contents.empty()) continue;
        std::ostringstream line;
        line << std::setw(3) << Between(record, "\"lineNumber\": ", ",") << ' '
             << std::string(2 * static_cast<std::size_t>(depth), ' ') << kind << "  "
             << Replaced(contents, "\n", "\\n") << (kind == "function" ? "  -> " + name : name)
             << (Between(record, "\"tags\": [", "]").empty() ? "" : "  [variable]");
        lines += Trimmed(line.str()) + '\n';
    }
    return lines;
}

TEST(Documents, RecordsAreThoseOfTheModule) {
    const Module module;
    Check(
        "records", "json", [&](const std::string& name) { return module.Text(name.c_str()); },
        RecordsInShort);
}

std::string RowsOf(const std::string& name) {
    const std::string command = "'" PARSECS_PATH "' --jsonl '" + name + "' 2>/dev/null";
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::string text(1 << 20, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), pipe));
    pclose(pipe);
    return text;
}

std::string RowInShort(const nlohmann::json& row) {
    std::ostringstream line;
    const auto number = [&row](const char* member) {
        return std::to_string(row[member].get<int>());
    };
    const std::string place = row["line"].is_null()
                                  ? "null"
                                  : number("line") + ':' + number("column") + '-' +
                                        number("endLine") + ':' + number("endColumn");
    const std::string kind = row["declares"] == "" ? row["kind"] : row["declares"];
    const std::string scope = row["scope"];
    const std::string name = row["name"];
    line << std::left << std::setw(10) << place
         << std::string(2 * (row["depth"].get<std::size_t>() - 1), ' ') << kind << "  ";
    if (row["declares"] == "") return line.str() + Replaced(row["text"], "\n", "\\n");
    return line.str() + (scope.empty() ? name : scope + '.' + name);
}

std::string RowsInShort(const std::string& text) {
    std::istringstream rows(text);
    std::string lines;
    std::string row;
    std::getline(rows, row);  // the head line
    while (std::getline(rows, row)) {
        const auto json = nlohmann::json::parse(row);
        const bool ofEveryFile =
            json["id"] < 2 || (json["kind"] == "preprocessor" && json["text"] == "");
        if (!ofEveryFile) lines += Trimmed(RowInShort(json)) + '\n';
    }
    return lines;
}

TEST(Documents, RowsAreThoseOfTheProgram) { Check("rows", "jsonl", RowsOf, RowsInShort); }

}  // namespace
