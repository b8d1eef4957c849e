// parsecs: loads the module, parses one file and writes the module's text, unchanged, to standard
// output or, through the module itself, to a file. The module's traces go to standard error.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "plugin/PluginCS.h"

namespace {

enum ExitCode { kDone = 0, kNoText = 1, kBadUsage = 2 };

int Fail(ExitCode code, const std::string& path, const char* reason) {
    std::fprintf(stderr, "parsecs: %s: %s\n", path.c_str(), reason);
    return code;
}

// Why the path cannot be opened like this, or null.
const char* ReasonAgainst(const std::string& path, int flags) {
    if ((flags & O_CREAT) == 0 && std::filesystem::is_directory(path)) return std::strerror(EISDIR);
    const int descriptor = open(path.c_str(), flags, 0666);
    if (descriptor < 0) return std::strerror(errno);
    close(descriptor);
    return nullptr;
}

std::string BesideProgram() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / MODULE_FILE).string();
}

int Run(int argc, char** argv) {
    std::string input;
    std::string output;
    std::string modulePath = BesideProgram();
    CLI::App app("Shows the statements and blocks of a C#-like source file as a JSON array.");
    app.add_option("FILE", input, "The source file")->required();
    app.add_option("-o", output, "Write the text to this file instead of standard output");
    app.add_option("--module", modulePath, "The module to load")->capture_default_str();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kBadUsage;
    }

    void* const module = dlopen(modulePath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) return Fail(kBadUsage, modulePath, dlerror());
    const auto parse = reinterpret_cast<PluginCS_ParseCS>(dlsym(module, "ParseCS"));
    const auto parseToFile =
        reinterpret_cast<PluginCS_parseAllFiles>(dlsym(module, "parseAllFiles"));
    const auto cleanup = reinterpret_cast<PluginCS_CleanupCS>(dlsym(module, "CleanupCS"));
    if (parse == nullptr || parseToFile == nullptr || cleanup == nullptr) {
        return Fail(kBadUsage, modulePath, "not a parser module");
    }
    if (const char* reason = ReasonAgainst(input, O_RDONLY)) return Fail(kBadUsage, input, reason);

    // What the module writes to standard output goes to standard error for the rest of the run.
    const int standardOutput = dup(STDOUT_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO);

    if (!output.empty()) {
        if (const char* reason = ReasonAgainst(output, O_WRONLY | O_CREAT)) {
            return Fail(kBadUsage, output, reason);
        }
        parseToFile(input.c_str(), output.c_str());
        return kDone;
    }
    const char* const text = parse(input.c_str());
    if (text == nullptr) return Fail(kNoText, input, "no text came back");
    std::FILE* const out = fdopen(standardOutput, "w");
    std::fputs(text, out);
    const bool written = std::fclose(out) == 0;
    cleanup();
    return written ? kDone : Fail(kNoText, "standard output", "cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::fputs(error.what(), stderr);
        return kNoText;
    }
}
