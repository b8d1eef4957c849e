#pragma once

#include <cstddef>
#include <memory_resource>

/// Asks the system to back a block of many megabytes with huge pages, which are cheaper to touch
/// for the first time; smaller blocks are left alone. Only advice: nothing depends on it.
void AskForHugePages(void* block, std::size_t size);

/// Memory from the allocator, in huge pages where it is much. Throws std::bad_alloc.
class HugePageMemory : public std::pmr::memory_resource {
  private:
    void* do_allocate(std::size_t size, std::size_t alignment) override;
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override;
    bool do_is_equal(const memory_resource& other) const noexcept override {
        return this == &other;
    }
};
