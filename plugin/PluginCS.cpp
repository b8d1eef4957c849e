#include "plugin/PluginCS.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "plugin/FileParser.h"
#include "plugin/ModuleState.h"

namespace {

std::string FromHost(const char* path) { return path == nullptr ? std::string() : path; }

// What is thrown below is that memory ran out, and a C host could not catch it: the parse is given
// up, and the result stays what it was.
void Parse(const char* inputPath, const char* outputPath) {
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
