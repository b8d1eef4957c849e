// What the C++ runtime needs to throw, without asking the system for it.
//
// The runtime would allocate its state of each thread at that thread's first exception, and a
// reserve for exceptions while the module is loaded: without the memory for either it ends the
// process, which is the host's. The module has a runtime of its own (see src/CMakeLists.txt), which
// takes these functions for its own. They are those of the Itanium C++ ABI.
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>

// NOLINTBEGIN(bugprone-reserved-identifier): the ABI's names
namespace __cxxabiv1 {

struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

namespace {

// In the memory that each thread has from its start.
__attribute__((tls_model("initial-exec"))) constinit thread_local __cxa_eh_globals globals{};

// The runtime's own part of an exception stands before the object. More than it needs.
constexpr std::size_t kHeader = 256;

// For when there is no memory. Each thread of a host may throw, though one at a time should.
struct Reserve {
    alignas(std::max_align_t) char bytes[kHeader + 128];
    std::atomic_flag taken;
};
constinit std::array<Reserve, 8> reserves{};

void* TakeReserve(std::size_t size) {
    for (Reserve& reserve : reserves) {
        if (size <= sizeof reserve.bytes && !reserve.taken.test_and_set()) return reserve.bytes;
    }
    std::abort();
}

bool GiveBack(void* block) {
    for (Reserve& reserve : reserves) {
        if (block != reserve.bytes) continue;
        reserve.taken.clear();
        return true;
    }
    return false;
}

}  // namespace

extern "C" {

__cxa_eh_globals* __cxa_get_globals() noexcept { return &globals; }

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return &globals; }

void* __cxa_allocate_exception(std::size_t size) noexcept {
    void* block = std::malloc(kHeader + size);
    if (block == nullptr) block = TakeReserve(kHeader + size);
    std::memset(block, 0, kHeader);
    return static_cast<char*>(block) + kHeader;
}

void __cxa_free_exception(void* object) noexcept {
    void* const block = static_cast<char*>(object) - kHeader;
    if (!GiveBack(block)) std::free(block);
}
}

}  // namespace __cxxabiv1
// NOLINTEND(bugprone-reserved-identifier)
