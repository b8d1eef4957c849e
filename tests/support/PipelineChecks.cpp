#include "tests/support/PipelineChecks.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "analysis/PartWalker.h"
#include "cleaner/Cleaner.h"
#include "parsecs/forms/strict/StrictJson.h"
#include "plugin/Pipeline.h"
#include "tests/support/FinderChecks.h"
#include "tests/support/RowChecks.h"

using namespace plugincs;

namespace {

using Json = nlohmann::json;

std::string BrokenByCleaner(std::string_view bytes, const std::vector<std::string>& symbols) {
    std::string text(bytes);
    Cleaner().ReplaceAll(text, "\t", " ");
    Cleaner().ReplaceAll(text, "\r", "\n");
    text = Cleaner().UncommentAndUnquoteText(text);
    const auto lineFeeds = std::count(text.begin(), text.end(), '\n');
    std::vector<std::string> defines;
    text = Cleaner().PreProcessorSimulation(text, symbols, defines, Traces(nullptr));
    if (std::count(text.begin(), text.end(), '\n') != lineFeeds) {
        return "the preprocessor pass keeps the number of line feeds";
    }
    const auto isClean = [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); };
    return std::all_of(text.begin(), text.end(), isClean) ? "" : "cleaned text is printable ASCII";
}

std::string WithoutWhiteSpaceOutsideLiterals(std::string_view text) {
    std::string kept;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0 || std::string_view(" \t\n\v\f\r").find(c) == std::string_view::npos) {
            kept += c;
        }
        if (quote == 0) {
            if (c == '"' || c == '\'') quote = c;
        } else if (c == '\\') {
            if (++i < text.size()) kept += text[i];
        } else if (c == quote) {
            quote = 0;
        }
    }
    return kept;
}

std::string BrokenByRecords(const Json& records, std::int32_t nextId) {
    std::unordered_set<int> ids;
    std::unordered_map<int, int> listedBy;
    for (const Json& record : records) {
        const int id = record.at("nodeID");
        if (!ids.insert(id).second || id < 0 || id >= nextId) return "ids are unique";
        for (const int child : record.at("childNodeIDs")) {
            if (!listedBy.emplace(child, id).second) return "a child is listed once";
        }
        const std::string contents = record.at("contents");
        std::vector<std::string> parts;
        PartsList(contents, parts);
        std::string joined;
        for (const std::string& part : parts) joined += part;
        if (joined != WithoutWhiteSpaceOutsideLiterals(contents)) {
            return "joined parts are the text without white space outside literals";
        }
    }
    for (const Json& record : records) {
        const auto parent = listedBy.find(record.at("nodeID"));
        if (record.at("parentID") != (parent == listedBy.end() ? -1 : parent->second)) {
            return "a record's parent is who lists it";
        }
    }
    return listedBy.size() + 1 == ids.size() ? "" : "all records but the root are children";
}

}  // namespace

std::string BrokenPromise(std::string_view bytes) {
    for (const std::vector<std::string>& symbols : {std::vector<std::string>(), {"A", "B"}}) {
        if (std::string broken = BrokenByCleaner(bytes, symbols); !broken.empty()) return broken;
    }
    if (std::string broken = BrokenByFinders(bytes); !broken.empty()) return broken;
    const FileRows rows("file.cs", std::string(bytes));
    if (std::string broken = BrokenByRows(rows, bytes); !broken.empty()) return broken;
    Parse parse("file.cs", std::string(bytes), Traces(nullptr));
    ParseSource(parse, "");
    if (parse.end == Parse::End::Abandoned) return parse.result ? "abandoned, with a text" : "";
    const Json records = Json::parse(StrictJson(parse.result.get()), nullptr, false);
    if (records.is_discarded()) return "the repaired text is strict JSON";
    return BrokenByRecords(records, parse.nextId);
}
