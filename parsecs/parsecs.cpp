// parsecs: loads the module, has it parse files, and writes its text as it is, as strict JSON, or
// as an outline.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "parsecs/Files.h"
#include "parsecs/Folder.h"
#include "parsecs/Module.h"
#include "parsecs/outline/Terminal.h"
#include "parsecs/strict/JsonString.h"
#include "parsecs/strict/StrictJson.h"
#include "process/Files.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kDescription =
    "  parsecs --outline Program.cs     the statements and blocks, as a tree for reading\n"
    "  parsecs --strict -o out src      all *.cs files below src, a JSON file below out for each\n"
    "\n"
    "Shows the statements and blocks of C#-like source files as JSON arrays. Ends with 0 when all\n"
    "was done, 1 when a file gave no text or the output could not be written, 2 when something\n"
    "could not be read, loaded, opened or understood.\n";

struct Options {
    std::vector<std::string> inputs;
    std::string output;
    std::string module = Module::DefaultPath();
    bool strict = false;
    bool outline = false;
    bool traces = false;
};

// False when there is nothing left to do: help was asked for.
bool ReadOptions(int argc, char** argv, Options& options) {
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
        if (error.get_exit_code() != 0) throw Failure(kBadUsage, "usage, see -h", error.what());
        app.exit(error);
        return false;
    }
    // Opened later, /dev/stdout would be where the traces go.
    if (options.output == "-" || options.output == "/dev/stdout") options.output.clear();
    return true;
}

// The module prints its traces to standard output: from now on they go to standard error or
// nowhere. Returns a descriptor for the real standard output, -1 if that is closed.
int TakeStandardOutput(bool showTraces) {
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int traces = showTraces ? STDERR_FILENO : open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (dup2(traces, STDOUT_FILENO) < 0) throw Failure(kBadUsage, "the module's traces");
    return output;
}

std::string Outlined(const std::string& input, int descriptor) {
    const std::string path = Module::ReadablePath(input);
    std::string outline;
    AppendOutline(ParsedFile(path, ReadWholeFile(path)), StyleFor(descriptor), outline);
    std::fflush(stdout);
    if (outline.empty()) throw Failure(kNoText, input, "no text came back");
    return outline;
}

std::string Rendered(const Options& options, const std::string& input, std::string_view text) {
    if (!options.strict) return std::string(text);
    std::string strict = StrictJson(text);
    if (options.inputs.size() == 1) return strict;
    // Line feeds stand only between tokens: in a string each is an escape by now.
    strict.erase(std::remove(strict.begin(), strict.end(), '\n'), strict.end());
    return "{\"file\": " + JsonString(input) + ", \"records\": " + strict + "}\n";
}

void Deliver(const Options& options, int standardOutput, std::string_view text) {
    if (!options.output.empty()) return WriteFile(options.output, text);
    while (!text.empty()) {
        const ssize_t written = write(standardOutput, text.data(), text.size());
        if (written < 0) throw Failure(kNoText, "standard output");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void ParseInOrder(const Module& module, const Options& options, int standardOutput,
                  std::vector<Failure>& failures) {
    const int terminal = options.output.empty() ? standardOutput : -1;
    for (const std::string& input : options.inputs) {
        std::string text;
        const auto parse = [&] {
            text = options.outline ? Outlined(input, terminal)
                                   : Rendered(options, input, module.Text(input));
        };
        // What cannot take this text takes no other: a failure to deliver ends the run.
        if (Attempt(input, parse, failures)) Deliver(options, standardOutput, text);
    }
}

// Several texts need a folder, and an existing one stays one.
bool NeedsFolder(const Options& options) {
    std::error_code error;
    if (options.output.empty()) return false;
    if (options.inputs.size() > 1 || options.output.back() == '/') return true;
    return fs::is_directory(options.inputs.front(), error) ||
           fs::is_directory(options.output, error);
}

// The module can write its text itself, but only to what can be replaced.
bool ModuleCanWrite(const Options& options) {
    std::error_code error;
    if (options.strict || options.outline || options.output.empty()) return false;
    const fs::file_status old = fs::status(options.output, error);
    return fs::is_regular_file(old) || !fs::exists(old);
}

void Run(const Options& options, std::vector<Failure>& failures) {
    std::error_code error;
    const std::string& output = options.output;
    const bool folder = NeedsFolder(options);
    if (folder && options.outline) throw Failure(kBadUsage, output, "an outline needs a file");
    if (folder) fs::create_directories(output, error);
    if (error) throw Failure(kBadUsage, output, error.message());
    if (!folder && fs::equivalent(options.inputs.front(), output, error)) {
        throw Failure(kBadUsage, output, "is the input");
    }
    const Module module(options.module);
    const int standardOutput = TakeStandardOutput(options.traces);
    if (folder) return ParseIntoFolder(module, options.inputs, output, options.strict, failures);
    if (ModuleCanWrite(options)) return module.ParseToFile(options.inputs.front(), output);
    ParseInOrder(module, options, standardOutput, failures);
}

}  // namespace

int main(int argc, char** argv) {
    // A reader that leaves early shows as a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    std::vector<Failure> failures;
    try {
        Options options;
        if (ReadOptions(argc, argv, options)) Run(options, failures);
    } catch (const Failure& failure) {
        failures.push_back(failure);
    } catch (const std::exception& error) {
        failures.emplace_back(kNoText, "unexpected", error.what());
    }
    ExitCode worst = kDone;
    for (const Failure& failure : failures) {
        std::fprintf(stderr, "parsecs: %s\n", failure.what());
        worst = std::max(worst, failure.code);
    }
    return worst;
}
