#include "tests/fuzz/FuzzInput.h"

#include <cstring>
#include <limits>

unsigned FuzzInput::byte()
{
    return isEmpty() ? 0U : static_cast<unsigned char>(m_bytes.at(m_next++));
}

int FuzzInput::below(int end)
{
    const unsigned low = byte();
    const unsigned value = end > 256 ? low | byte() << 8U : low;
    return static_cast<int>(value % static_cast<unsigned>(end));
}

qint64 FuzzInput::integer()
{
    constexpr qint64 odd[] = {0,
                              -1,
                              std::numeric_limits<qint32>::max(),
                              std::numeric_limits<qint32>::min(),
                              std::numeric_limits<qint64>::max(),
                              std::numeric_limits<qint64>::min()};
    if (flag()) {
        return oneOf(odd);
    }
    quint64 value = 0;
    for (int i = 0; i < 8; ++i) {
        value = value << 8U | byte();
    }
    return static_cast<qint64>(value);
}

double FuzzInput::real()
{
    using Limits = std::numeric_limits<double>;
    constexpr double odd[] = {
        0.0,
        -0.0,
        1.0,
        10.05,
        -7.5,
        99999.99,
        Limits::infinity(),
        Limits::max(),
        Limits::lowest(),
        Limits::min(),
        Limits::denorm_min(),
        1e18,
        -1e18,
    };
    const int choice = below(16);
    if (choice < 13) {
        return odd[choice];
    }
    if (choice == 13) {
        return Limits::quiet_NaN();
    }
    if (choice == 14) {
        return below(65536) / 100.0;
    }
    const qint64 bits = integer();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QByteArray FuzzInput::text(int most)
{
    const int size = below(most + 1);
    const QByteArray taken = m_bytes.mid(m_next, size);
    m_next += taken.size();
    return taken;
}
