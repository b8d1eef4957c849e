#include "text/LargePages.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>

void AskForLargePages(void* block, std::size_t size) {
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    if (size < 2 * kLargePage) return;
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t start = (address + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t end = (address + size) & ~(kLargePage - 1);
    madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}
#else
void AskForLargePages(void* /*block*/, std::size_t /*size*/) {}
#endif
