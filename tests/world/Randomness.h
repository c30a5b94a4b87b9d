#pragma once

#include <cstdint>

namespace World {

/// What the product itself leaves to chance, names and waiting times, comes from this seed on from a sequence
/// of its own: Qt's functions for that are replaced in this program.
void seedRandomness(std::uint64_t seed);

} // namespace World
