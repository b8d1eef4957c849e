#include "process/ModuleState.h"

#include <new>

namespace {

// An exception while the module is loaded would end the host. So without memory the path is empty.
std::string SamplePath() noexcept {
    try {
        return "/usr/share/samples/Sample.cs";
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace

std::int32_t objectCount = 1;
std::int32_t currentIndex = 0;
std::string chunk;
std::string startPath = SamplePath();
std::vector<plugincs::ObjectBranch*> AllBranches;

char* returnResult = nullptr;
char* resPtr = nullptr;
