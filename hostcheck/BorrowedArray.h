#pragma once

#include <cstddef>

namespace HostCheck {

/// A copy of an array that an overlay lends to the terminal's painter, with the end of readable memory right
/// after its last number. A read beyond it is noticed; it finds zeros, so that the program goes on.
class BorrowedArray
{
public:
    /// Two may live at a time, in turn. Null with a count of 0 is an empty array.
    BorrowedArray(const double *values, std::size_t count);
    ~BorrowedArray();
    BorrowedArray(const BorrowedArray &) = delete;
    BorrowedArray &operator=(const BorrowedArray &) = delete;

    const double *data() const { return m_data; }

    /// True when somebody has read on.
    bool isReadBeyond() const;

private:
    const std::size_t m_place;
    const double *m_data = nullptr;
};

} // namespace HostCheck
