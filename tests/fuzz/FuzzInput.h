#pragma once

#include <QByteArray>

#include <cstddef>
#include <utility>

/// The bytes of a fuzzer, taken as one decision after the other. When they are used up every further decision
/// is the first of its choices, so that each input says a finite thing.
class FuzzInput
{
public:
    explicit FuzzInput(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    bool isEmpty() const { return m_next >= m_bytes.size(); }

    /// From 0 to `end`, which is left out. Requires 0 < end <= 65536.
    int below(int end);

    bool flag() { return below(2) == 1; }

    /// Any number at all, the ends of its range mostly among them.
    qint64 integer();

    /// Any number at all, odd ones among them: zeros, infinities, what is none.
    double real();

    /// Up to `most` bytes.
    QByteArray text(int most);

    template <class Value, std::size_t count>
    const Value &oneOf(const Value (&values)[count])
    {
        return values[below(static_cast<int>(count))];
    }

private:
    unsigned byte();

    QByteArray m_bytes;
    int m_next = 0;
};
