#pragma once

#include "tests/world/SimulatedClock.h"

#include <cstdint>
#include <initializer_list>
#include <random>
#include <vector>

namespace World {

/// All that is left to chance in a world, from its one seed.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : m_generator(seed) {}

    /// One of [0, count); the same with every standard library.
    std::int64_t below(std::int64_t count)
    {
        return static_cast<std::int64_t>(m_generator() % static_cast<std::uint64_t>(count));
    }
    /// One of [from, to].
    std::int64_t between(std::int64_t from, std::int64_t to) { return from + below(to - from + 1); }
    bool happens(int percent) { return below(100) < percent; }
    Instant time(Instant from, Instant to) { return Instant(between(from.count(), to.count())); }
    std::uint64_t number() { return m_generator(); }

    /// The place of one of these, each as likely as its weight tells.
    std::size_t choose(std::initializer_list<int> weights)
    {
        std::int64_t sum = 0;
        for (const int weight : weights) {
            sum += weight;
        }
        std::int64_t left = below(sum);
        std::size_t place = 0;
        for (const int weight : weights) {
            if (left < weight) {
                break;
            }
            left -= weight;
            ++place;
        }
        return place;
    }

private:
    std::mt19937_64 m_generator;
};

} // namespace World
