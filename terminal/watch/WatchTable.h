#pragma once

#include "terminal/trade/LastPrice.h"
#include "terminal/trade/RecordTable.h"

#include <optional>

namespace Terminal {

/// A security that is watched, with its last price.
struct WatchedSecurity
{
    Security security;
    std::optional<LastPrice> last;
    std::optional<double> closeBefore; ///< of the day before that of the last price

    /// From the close before to the last price, in percent.
    std::optional<double> change() const;
};

enum class WatchColumn { Code, Name, Last, Change };

/// The watch list as a table, in the order of the list.
class WatchTable : public RecordTable<WatchedSecurity, WatchColumn>
{
public:
    WatchTable();
};

} // namespace Terminal
