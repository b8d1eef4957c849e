#include "parsecs/Folder.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <map>

#include "parsecs/strict/StrictJson.h"

namespace {

namespace fs = std::filesystem;

struct Plan {
    fs::path folder;
    std::vector<Failure>& failures;
    std::map<std::string, std::string> inputs;  // of each output

    void AddFile(const std::string& input, fs::path below) {
        if (below.extension() == ".cs") below.replace_extension();
        const auto [owner, isNew] = inputs.emplace((folder / below).string() + ".json", input);
        if (isNew) return;
        failures.emplace_back(kBadUsage, input, "has the same output as " + owner->second);
    }

    // Links to folders are not followed: they may lead back up.
    void AddFolder(const fs::path& top, const fs::path& below) {
        std::error_code error;
        fs::directory_iterator entry(top, error);
        for (; entry != fs::directory_iterator(); entry.increment(error)) {
            const fs::path name = below / entry->path().filename();
            if (fs::is_directory(entry->symlink_status(error))) {
                AddFolder(entry->path(), name);
            } else if (name.extension() == ".cs") {
                AddFile(entry->path().string(), name);
            }
        }
        if (error) failures.emplace_back(kBadUsage, top.string(), error.message());
    }

    void Add(const std::string& input) {
        std::error_code error;
        if (fs::is_directory(input, error)) return AddFolder(input, {});
        fs::path below;
        for (const fs::path& part : fs::path(input).lexically_normal().relative_path()) {
            if (part != "..") below /= part;  // which would lead out of the output folder
        }
        AddFile(input, input == "-" ? "stdin" : below);
    }
};

void Parse(const Module& module, const std::string& input, const std::string& output, bool strict) {
    std::error_code error;  // shows when the output is opened
    fs::create_directories(fs::path(output).parent_path(), error);
    if (!strict) return module.ParseToFile(input, output);
    WriteFile(output, StrictJson(module.Text(input)));
}

}  // namespace

void ParseIntoFolder(const Module& module, const std::vector<std::string>& inputs,
                     const std::string& folder, bool strict, std::vector<Failure>& failures) {
    Plan plan{folder, failures, {}};
    for (const std::string& input : inputs) plan.Add(input);
    const bool terminal = isatty(STDERR_FILENO) != 0;
    std::size_t tried = 0;
    std::size_t done = 0;
    for (const auto& [output, input] : plan.inputs) {
        if (terminal) std::fprintf(stderr, "\r%zu of %zu", ++tried, plan.inputs.size());
        const auto parse = [&, &from = input, &to = output] { Parse(module, from, to, strict); };
        if (Attempt(input, parse, failures)) ++done;
    }
    std::fprintf(stderr, "%sparsecs: %s: %zu parsed, %zu failed\n", terminal ? "\r\x1B[K" : "",
                 folder.c_str(), done, failures.size());
}
