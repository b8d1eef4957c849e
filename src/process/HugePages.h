// Huge pages for large blocks of memory.
#pragma once

#include <cstddef>
#include <memory_resource>

namespace plugincs {

/// Advises the kernel to back a block of `size` bytes with huge pages, which take fewer page
/// faults. Blocks below 4 MiB are left alone. Best effort: errors are ignored.
void AskForHugePages(void* block, std::size_t size);

/// Memory from the plain operator new, with huge pages for large blocks. Serves alignments up to
/// that operator's only. Throws std::bad_alloc.
class HugePageMemory : public std::pmr::memory_resource {
  private:
    void* do_allocate(std::size_t size, std::size_t alignment) override;
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override;
    bool do_is_equal(const memory_resource& other) const noexcept override {
        return this == &other;
    }
};

}  // namespace plugincs
