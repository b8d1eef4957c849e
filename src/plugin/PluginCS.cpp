#include <PluginCS.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "plugin/Pipeline.h"
#include "process/Files.h"
#include "process/ModuleState.h"

using namespace plugincs;

namespace {

// For who looks into the module's file.
[[gnu::used]] constexpr char kVersion[] = "PluginCS version " PLUGINCS_VERSION;

// At its first exception each thread needs some memory from the C++ runtime, which ends the process
// if there is none. So it is allocated up front: at load, and in each thread that parses.
void PrepareForExceptions() {
    // Volatile, so that the compiler cannot remove a call without an effect that it knows of.
    [[maybe_unused]] const volatile int exceptions = std::uncaught_exceptions();
}
[[maybe_unused]] const bool prepared = (PrepareForExceptions(), true);

std::string FromHost(const char* path) { return path == nullptr ? std::string() : path; }

// Shows hosts a parse when it ends, whatever has ended it: all that they see of one is set here.
class Exported {
  public:
    explicit Exported(Parse& parse) : parse_(parse) {}
    Exported(const Exported&) = delete;
    Exported& operator=(const Exported&) = delete;
    ~Exported() {
        objectCount = parse_.objectCount;
        currentIndex = parse_.nextId;
        if (parse_.leftOver) chunk = std::move(*parse_.leftOver);
        if (parse_.result != nullptr) returnResult = parse_.result.release();
    }

  private:
    Parse& parse_;
};

// Parses the file, and delivers the text to the file `outputPath`, or with an empty path to
// `returnResult`. A path that cannot be read is an empty text. Throws std::bad_alloc.
void ParseFileToFile(std::string inputPath, std::string_view outputPath) {
    objectCount = currentIndex = 0;
    std::string text = ReadWholeFile(inputPath);
    Parse parse(std::move(inputPath), std::move(text), Traces(stdout));
    const Exported exported(parse);
    ParseSource(parse, outputPath);
}

// No exception may reach a C host. All of them mean that memory ran out: the parse is given up, and
// the result stays what it was.
void ParseForHost(const char* inputPath, const char* outputPath) {
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
    ParseForHost(path, nullptr);
    return returnResult;
}

void CleanupCS() {
    std::free(returnResult);
    returnResult = nullptr;
}

void parseAllFiles(const char* inputPath, const char* outputPath) {
    ParseForHost(inputPath, outputPath);
}
