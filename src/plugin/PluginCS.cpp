#include <PluginCS.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "plugin/Pipeline.h"
#include "process/ModuleState.h"

namespace {

// At its first exception each thread needs some memory from the C++ runtime, which ends the process
// if there is none. So it is allocated up front: at load, and in each thread that parses.
void PrepareForExceptions() {
    // Volatile, so that the compiler cannot remove a call without an effect that it knows of.
    [[maybe_unused]] const volatile int exceptions = std::uncaught_exceptions();
}
[[maybe_unused]] const bool prepared = (PrepareForExceptions(), true);

std::string FromHost(const char* path) { return path == nullptr ? std::string() : path; }

// No exception may reach a C host. All of them mean that memory ran out: the parse is given up, and
// the result stays what it was.
void Parse(const char* inputPath, const char* outputPath) {
    PrepareForExceptions();
    try {
        ParseFileToFile(FromHost(inputPath), FromHost(outputPath));
    } catch (const std::exception&) {
    }
}

}  // namespace

char* Info() {
    char text[64];
    const int length = std::sprintf(text, "Address of resPtr: %p\n", static_cast<void*>(&resPtr));
    resPtr = static_cast<char*>(std::calloc(static_cast<std::size_t>(length) + 1, 1));
    if (resPtr != nullptr) std::memcpy(resPtr, text, static_cast<std::size_t>(length));
    return resPtr;
}

char* ParseCS(const char* path) {
    Parse(path, nullptr);
    return returnResult;
}

void CleanupCS() {
    std::free(returnResult);
    returnResult = nullptr;
}

void parseAllFiles(const char* inputPath, const char* outputPath) { Parse(inputPath, outputPath); }
