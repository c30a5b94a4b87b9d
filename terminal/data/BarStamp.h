#pragma once

#include "trading/TradingDate.h"

#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace Terminal {

/// When a bar is: the day, the minute, or both.
struct BarStamp
{
    std::optional<Trading::TradingDate> date;
    std::optional<int> minute; ///< in minutes since midnight
};

/// The way in which one file writes days and times, found out from its first row: eight digits or year, month
/// and day apart; hhmm, hh:mm, hhmmss, hh:mm:ss; both in one cell, with the offset of the exchange's zone if
/// any. The year comes first: 01/02/2024 is two days.
class BarStampForm
{
public:
    /// Nothing when the cell is neither a day nor a time.
    static std::optional<BarStampForm> of(std::string_view cell);

    bool hasDate() const { return m_hasDate; }
    bool hasTime() const { return m_hasTime; }

    /// Nothing when the cell has another form or names what is in no calendar and on no clock. Years are
    /// those in which exchanges have had bars.
    std::optional<BarStamp> read(std::string_view cell) const;

    /// For people: "yyyymmdd", "yyyy-mm-dd hh:mm".
    QString shown() const;

private:
    BarStampForm() = default;

    std::string m_shape;
    bool m_hasDate = false;
    bool m_hasTime = false;
};

} // namespace Terminal
