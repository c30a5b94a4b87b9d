#include "tests/world/Randomness.h"

#include <QRandomGenerator>
#include <QUuid>

#include <random>

namespace World {

namespace {

std::mt19937_64 &sequence()
{
    static std::mt19937_64 numbers;
    return numbers;
}

} // namespace

void seedRandomness(std::uint64_t seed)
{
    sequence().seed(seed);
}

} // namespace World

QUuid QUuid::createUuid()
{
    const auto part = [](std::uint64_t number, int place) {
        return static_cast<uchar>(number >> (8 * place));
    };
    const std::uint64_t one = World::sequence()();
    const std::uint64_t other = World::sequence()();
    return QUuid(static_cast<uint>(one), static_cast<ushort>(one >> 32), static_cast<ushort>(one >> 48),
                 part(other, 0), part(other, 1), part(other, 2), part(other, 3), part(other, 4),
                 part(other, 5), part(other, 6), part(other, 7));
}

void QRandomGenerator::_fillRange(void *buffer, void *bufferEnd)
{
    for (auto *number = static_cast<quint32 *>(buffer); number != bufferEnd; ++number) {
        *number = static_cast<quint32>(World::sequence()());
    }
}
