#include <PluginCS.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "plugin/Pipeline.h"
#include "process/ModuleState.h"

namespace {

// The C++ runtime ends the process when it finds no memory for what a thread needs at its first
// exception. So the thread that loads the module needs it now, and each thread when it parses.
void PrepareForExceptions() {
    // The call has no effect that a compiler knows of.
    [[maybe_unused]] const volatile int exceptions = std::uncaught_exceptions();
}
[[maybe_unused]] const bool prepared = (PrepareForExceptions(), true);

std::string FromHost(const char* path) { return path == nullptr ? std::string() : path; }

// What is thrown below is that memory ran out, and a C host could not catch it: the parse is given
// up, and the result stays what it was.
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
