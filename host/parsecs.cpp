// parsecs: loads the module, has it parse files, and writes its text as it is, as strict JSON, or
// as an outline.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/Failure.h"
#include "host/FolderPlan.h"
#include "host/Module.h"
#include "host/Outline.h"
#include "host/OutputFile.h"
#include "host/Streams.h"
#include "host/StrictJson.h"
#include "host/Terminal.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kDescription =
    "  parsecs --outline Program.cs     the statements and blocks, as a tree for reading\n"
    "  parsecs --strict -o out src      all *.cs files below src, a JSON file below out for each\n"
    "\n"
    "Shows the statements and blocks of C#-like source files as JSON arrays. Without --strict or\n"
    "--outline the text is the module's own, in which strict JSON parsers meet \\' and raw line\n"
    "feeds. Ends with 0 when all was done, 1 when a file gave no text or the output could not be\n"
    "written, 2 when something could not be read, loaded, opened or understood.\n";

struct Options {
    std::vector<std::string> inputs;
    std::string output;
    std::string module = Module::DefaultPath();
    bool strict = false;
    bool outline = false;
    bool traces = false;
};

ExitCode Report(const Failure& failure) {
    std::fprintf(stderr, "parsecs: %s\n", failure.what());
    return failure.code;
}

// The exit code of a run that is over already: help was asked for, or the usage is wrong.
std::optional<int> ReadOptions(int argc, char** argv, Options& options) {
    CLI::App app(kDescription, "parsecs");
    app.add_option("FILE", options.inputs,
                   "Source files, folders (with -o), or - for standard input, which the records "
                   "call /dev/stdin")
        ->required();
    app.add_option("-o", options.output,
                   "The output file, or with several files or a folder the output folder");
    auto* const strict = app.add_flag(
        "--strict", options.strict, "Valid JSON; for several files one line {file, records} each");
    app.add_flag("--outline", options.outline, "A tree for reading, one line a record")
        ->excludes(strict);
    app.add_flag("--traces", options.traces, "Let the module's traces through to standard error");
    app.add_option("--module", options.module, "The module to load")->capture_default_str();
    app.set_version_flag("--version", "parsecs " PROJECT_VERSION);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);
        std::fprintf(stderr, "parsecs: %s (-h shows the usage)\n", error.what());
        return kBadUsage;
    }
    if (options.output == "-") options.output.clear();
    return std::nullopt;
}

// What the module is told to open.
std::string ReadablePath(const std::string& input) {
    std::error_code error;
    if (input == "-") return SpoolStandardInput();
    if (fs::is_directory(input, error)) {
        throw Failure(kBadUsage, input, "is a folder: -o DIR parses the files below it");
    }
    // Opening it to see would take a pipe from the module.
    if (access(input.c_str(), R_OK) != 0) throw Failure(kBadUsage, input, errno);
    return input;
}

std::string Rendered(const Options& options, std::string_view text, int descriptor) {
    std::string strict = StrictJson(text);
    if (options.strict) return strict;
    return Outline(strict, {TerminalWidth(descriptor), ShowsColour(descriptor)});
}

void ParseToFile(const Module& module, const Options& options, const Job& job) {
    const std::string input = ReadablePath(job.input);
    std::error_code error;
    if (fs::equivalent(input, job.output, error)) {
        throw Failure(kBadUsage, job.output, "is the input");
    }
    OutputFile file(job.output);
    if (options.strict || options.outline) {
        file.Put(Rendered(options, module.Text(input), -1));
    } else {
        module.ParseToFile(input, file.Part());
        file.ExpectRecords(input);
    }
    file.Commit();
}

std::string SinkName(const Options& options) {
    return options.output.empty() ? "standard output" : options.output;
}

void ParseToSink(const Module& module, const Options& options, const std::string& input, int sink) {
    const std::string name = SinkName(options);
    const std::string path = ReadablePath(input);
    const std::string_view text = module.Text(path);
    if (options.strict && options.inputs.size() > 1) {
        WriteAll(sink, FileLine(path, text), name);
    } else if (options.strict || options.outline) {
        WriteAll(sink, Rendered(options, text, sink), name);
    } else {
        WriteAll(sink, text, name);
    }
}

// The failure that is being handled; what ran out of memory is named by its input.
Failure Caught(const std::string& input) {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& error) {
        return {kNoText, input, error.what()};
    }
}

int ParseInOrder(const Module& module, const Options& options, int sink) {
    ExitCode worst = kDone;
    for (const std::string& input : options.inputs) {
        try {
            ParseToSink(module, options, input, sink);
        } catch (const WriteFailure& failure) {
            return std::max(worst, Report(failure));  // the next one would fail as well
        } catch (const std::exception&) {
            worst = std::max(worst, Report(Caught(input)));
        }
    }
    if (close(sink) != 0) return std::max(worst, Report({kNoText, SinkName(options), errno}));
    return worst;
}

void ShowProgress(std::size_t number, std::size_t all, const std::string& input) {
    const std::size_t width = TerminalWidth(STDERR_FILENO);
    const std::string line = std::to_string(number) + '/' + std::to_string(all) + ' ' + input;
    std::fprintf(stderr, "\r%s\x1B[K", Fitted(line, width).c_str());
}

int ParseIntoFolder(const Module& module, const Options& options) {
    auto [jobs, failures] = PlanFolder(options.inputs, options.output);
    const bool terminal = isatty(STDERR_FILENO) != 0;
    std::size_t done = 0;
    for (std::size_t next = 0; next < jobs.size(); ++next) {
        if (terminal) ShowProgress(next + 1, jobs.size(), jobs[next].input);
        try {
            ParseToFile(module, options, jobs[next]);
            ++done;
        } catch (const std::exception&) {
            failures.push_back(Caught(jobs[next].input));
        }
    }
    std::fprintf(stderr, "%sparsecs: %s: %zu parsed, %zu failed\n", terminal ? "\r\x1B[K" : "",
                 options.output.c_str(), done, failures.size());
    ExitCode worst = kDone;
    for (const Failure& failure : failures) worst = std::max(worst, Report(failure));
    return worst;
}

enum class Target { kSink, kFile, kFolder };

// Several texts need a folder, and an existing one stays one. Devices and pipes cannot be replaced,
// only written to.
Target ChooseTarget(const Options& options) {
    std::error_code error;
    if (options.output.empty()) return Target::kSink;
    const fs::file_status old = fs::status(options.output, error);
    if (options.inputs.size() > 1 || fs::is_directory(options.inputs.front(), error) ||
        fs::is_directory(old) || options.output.back() == '/') {
        if (fs::exists(old) && !fs::is_directory(old)) {
            throw Failure(kBadUsage, options.output, ENOTDIR);
        }
        return Target::kFolder;
    }
    return fs::exists(old) && !fs::is_regular_file(old) ? Target::kSink : Target::kFile;
}

int Run(const Options& options) {
    const Target target = ChooseTarget(options);
    if (target == Target::kFolder && options.outline) {
        throw Failure(kBadUsage, options.output, "is a folder: an outline goes to one file");
    }
    const Module module(options.module);
    const int sink = target == Target::kSink ? OpenSink(options.output) : -1;
    RedirectTraces(options.traces);
    if (target == Target::kSink) return ParseInOrder(module, options, sink);
    if (target == Target::kFolder) return ParseIntoFolder(module, options);
    ParseToFile(module, options, {options.inputs.front(), options.output});
    return kDone;
}

}  // namespace

int main(int argc, char** argv) {
    // A reader that leaves early shows as a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        Options options;
        if (const std::optional<int> code = ReadOptions(argc, argv, options)) return *code;
        return Run(options);
    } catch (const std::exception&) {
        return Report(Caught("parsecs"));
    }
}
