#include "tests/support/Allocations.h"

#include <cstdlib>
#include <new>

#ifdef __GLIBC__
extern "C" void *__libc_malloc(std::size_t size); // NOLINT(readability-identifier-naming)
#endif

namespace {

// Each block is preceded by its size; the header keeps the alignment that new promises.
constexpr std::size_t header = alignof(std::max_align_t);

Allocations counted;

void *takeUncounted(std::size_t size)
{
#ifdef __GLIBC__
    return __libc_malloc(size);
#else
    return std::malloc(size);
#endif
}

} // namespace

Allocations Allocations::now()
{
    return counted;
}

#ifdef __GLIBC__

/// Qt's texts and arrays come from here, past operator new.
extern "C" __attribute__((visibility("default"))) void *malloc(std::size_t size)
{
    ++counted.count;
    return takeUncounted(size);
}

#endif

void *operator new(std::size_t size)
{
    auto *block = static_cast<std::size_t *>(takeUncounted(size + header));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    *block = size;
    ++counted.count;
    counted.bytes += size;
    return reinterpret_cast<char *>(block) + header;
}

void operator delete(void *memory) noexcept
{
    if (memory != nullptr) {
        void *block = static_cast<char *>(memory) - header;
        counted.bytes -= *static_cast<std::size_t *>(block);
        std::free(block);
    }
}

void operator delete(void *memory, std::size_t) noexcept
{
    operator delete(memory);
}
