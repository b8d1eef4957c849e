#include "parsecs/Module.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "parsecs/Files.h"

namespace fs = std::filesystem;

namespace {

bool EndsLikeRecords(const std::string& path) {
    char end[4] = "";
    std::ifstream file(path, std::ios::binary);
    file.seekg(-3, std::ios::end).read(end, 3);
    return std::string_view(end) == "\n]\n";
}

}  // namespace

Module::Module(const std::string& path) {
    // A bare name would be searched for among the system's libraries.
    void* const handle = dlopen(fs::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) throw Failure(kBadUsage, "no module", dlerror());
    parse_ = reinterpret_cast<PluginCS_ParseCS>(dlsym(handle, "ParseCS"));
    parseToFile_ = reinterpret_cast<PluginCS_parseAllFiles>(dlsym(handle, "parseAllFiles"));
    cleanup_ = reinterpret_cast<PluginCS_CleanupCS>(dlsym(handle, "CleanupCS"));
    const bool complete = parse_ != nullptr && parseToFile_ != nullptr && cleanup_ != nullptr;
    if (!complete) throw Failure(kBadUsage, path, "is no parser module");
}

std::string Module::DefaultPath() {
    std::error_code error;
    fs::path program = fs::read_symlink("/proc/self/exe", error);
    Dl_info self{};
    if (error && dladdr(reinterpret_cast<void*>(&DefaultPath), &self) != 0) {
        program = self.dli_fname;
    }
    const fs::path beside = program.replace_filename(MODULE_FILE);
    if (fs::exists(beside, error)) return beside.string();
    return program.replace_filename(INSTALLED_MODULE).lexically_normal().string();
}

// What to give to the module, which takes a file that it cannot open for an empty one.
std::string Module::ReadablePath(const std::string& input) {
    std::string path = input == "-" ? "/dev/stdin" : input;
    // Opening the file to see would take a pipe from the module.
    if (access(path.c_str(), R_OK) != 0) throw Failure(kBadUsage, input);
    if (fs::is_socket(path)) throw Failure(kBadUsage, input, "is a socket");
    if (fs::is_directory(path)) throw Failure(kBadUsage, input, "is a folder: it needs -o DIR");
    return path;
}

std::string_view Module::Text(const std::string& input) const {
    const std::string path = ReadablePath(input);
    cleanup_();  // a parse that is given up returns the previous text, if there is one
    const char* const text = parse_(path.c_str());
    std::fflush(stdout);
    if (text == nullptr) throw Failure(kNoText, input, "no text came back");
    return text;
}

void Module::ParseToFile(const std::string& input, const std::string& output) const {
    const std::string path = ReadablePath(input);
    const std::string part = output + ".part";
    WriteFile(part, "");  // a parse that is given up leaves it as it is
    parseToFile_(path.c_str(), part.c_str());
    std::fflush(stdout);
    if (EndsLikeRecords(part)) return fs::rename(part, output);
    const bool untouched = fs::is_empty(part);
    fs::remove(part);
    if (untouched) throw Failure(kNoText, input, "no text came back");
    throw Failure(kNoText, output, "could not be written to the end");
}
