#pragma once

#include <cstddef>

/// What the program has asked the heap for, counted by this program's operator new and, where the C library
/// lets it, malloc().
struct Allocations
{
    std::size_t count = 0;
    std::size_t bytes = 0; ///< in use now, as requested of operator new

    static Allocations now();

    /// Number of blocks that `work` asks for.
    template <class Work>
    static double during(Work &&work)
    {
        const std::size_t before = now().count;
        work();
        return static_cast<double>(now().count - before);
    }
};
