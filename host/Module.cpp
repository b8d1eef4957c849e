#include "host/Module.h"

#include <dlfcn.h>

#include <cstdio>
#include <filesystem>

#include "host/Failure.h"

namespace {

void* Load(const std::string& path) {
    // A bare name would be searched for among the system's libraries.
    const std::string file = std::filesystem::absolute(path).string();
    void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle != nullptr) return handle;
    std::string reason = dlerror();
    if (reason.compare(0, file.size() + 2, file + ": ") == 0) reason.erase(0, file.size() + 2);
    throw Failure(kBadUsage, path, reason);
}

void* Function(void* handle, const char* name, const std::string& path) {
    void* const function = dlsym(handle, name);
    if (function != nullptr) return function;
    throw Failure(kBadUsage, path, std::string("is no parser module, it has no ") + name);
}

}  // namespace

Module::Module(const std::string& path) {
    void* const handle = Load(path);
    parse_ = reinterpret_cast<PluginCS_ParseCS>(Function(handle, "ParseCS", path));
    parseToFile_ =
        reinterpret_cast<PluginCS_parseAllFiles>(Function(handle, "parseAllFiles", path));
    cleanup_ = reinterpret_cast<PluginCS_CleanupCS>(Function(handle, "CleanupCS", path));
}

std::string Module::DefaultPath() {
    std::error_code error;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    Dl_info self{};
    if (error && dladdr(reinterpret_cast<void*>(&Module::DefaultPath), &self) != 0) {
        program = self.dli_fname;
    }
    const std::filesystem::path folder = program.parent_path();
    const std::filesystem::path beside = folder / MODULE_FILE;
    if (std::filesystem::exists(beside, error)) return beside.string();
    return (folder / INSTALLED_MODULE).lexically_normal().string();
}

std::string_view Module::Text(const std::string& path) const {
    // Without a text to fall back on, a parse that is given up returns none.
    cleanup_();
    const char* const text = parse_(path.c_str());
    std::fflush(stdout);
    if (text == nullptr) throw Failure(kNoText, path, "no text came back");
    return text;
}

void Module::ParseToFile(const std::string& input, const std::string& output) const {
    parseToFile_(input.c_str(), output.c_str());
    std::fflush(stdout);
}
