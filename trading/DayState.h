#pragma once

namespace Trading {

/// The parts of a day, in their order.
enum class DayState {
    Closed,         ///< no trading day, and after its end
    BeforeOpen,     ///< a trading day on which no order is taken yet
    OpeningAuction, ///< orders are gathered until 09:25
    BeforeMorning,  ///< the opening price is known, and trading has not begun
    Morning,
    NoonBreak,
    Afternoon,
    ClosingAuction,
    AfterClose, ///< between the close and the trading after it, where there is any
    AfterHours, ///< trading at the closing price
};

/// True while orders reach the exchange to be dealt at prices that change: from the opening auction to the
/// close, without the break at noon.
bool takesOrders(DayState state);

} // namespace Trading
