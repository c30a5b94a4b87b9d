#include "tests/support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

// Each block is preceded by its size; the header keeps the alignment that new promises.
constexpr std::size_t header = alignof(std::max_align_t);

Allocations counted;

} // namespace

Allocations Allocations::now()
{
    return counted;
}

void *operator new(std::size_t size)
{
    auto *block = static_cast<std::size_t *>(std::malloc(size + header));
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
