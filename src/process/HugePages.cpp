#include "process/HugePages.h"

#include <cassert>
#include <new>

#ifdef __linux__
#include <sys/mman.h>

#include <cstdint>
#endif

namespace plugincs {

#ifdef __linux__
void AskForHugePages(void* block, std::size_t size) {
    constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
    if (size < 2 * kHugePage) return;
    const std::uintptr_t past = reinterpret_cast<std::uintptr_t>(block) % kHugePage;
    const std::uintptr_t skipped = past == 0 ? 0 : kHugePage - past;
    const std::uintptr_t advised = (size - skipped) / kHugePage * kHugePage;
    madvise(static_cast<char*>(block) + skipped, advised, MADV_HUGEPAGE);
}
#else
void AskForHugePages(void* /*block*/, std::size_t /*size*/) {}
#endif

// The standard new_delete_resource calls the operator new for over-aligned types, which is slower.
void* HugePageMemory::do_allocate(std::size_t size, [[maybe_unused]] std::size_t alignment) {
    assert(alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    void* const block = ::operator new(size);
    AskForHugePages(block, size);
    return block;
}

void HugePageMemory::do_deallocate(void* block, std::size_t /*size*/, std::size_t /*alignment*/) {
    ::operator delete(block);
}

}  // namespace plugincs
