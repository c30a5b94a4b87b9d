// Days as bars carry them, in one number.
#pragma once

#include <QDate>

namespace Terminal {

/// The day of yyyymmdd; an invalid one when there is no such day.
inline QDate dateOf(std::int32_t yyyymmdd)
{
    return {yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100};
}

inline std::int32_t packedDate(const QDate &date)
{
    return date.year() * 10000 + date.month() * 100 + date.day();
}

/// "2024-01-31"
inline QString dateText(std::int32_t yyyymmdd)
{
    return dateOf(yyyymmdd).toString(Qt::ISODate);
}

} // namespace Terminal
