// The fuzz target: aborts where an invariant of the pipeline breaks.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/PipelineChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string broken = BrokenPromise({reinterpret_cast<const char*>(data), size});
    if (!broken.empty()) {
        std::fprintf(stderr, "Broken promise: %s\n", broken.c_str());
        std::abort();
    }
    return 0;
}
