#include "text/LargePages.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>

void AskForLargePages(void* block, std::size_t size) {
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    if (size < 2 * kLargePage) return;
    const std::uintptr_t past = reinterpret_cast<std::uintptr_t>(block) % kLargePage;
    const std::uintptr_t skipped = past == 0 ? 0 : kLargePage - past;
    const std::uintptr_t advised = (size - skipped) / kLargePage * kLargePage;
    madvise(static_cast<char*>(block) + skipped, advised, MADV_HUGEPAGE);
}
#else
void AskForLargePages(void* /*block*/, std::size_t /*size*/) {}
#endif
