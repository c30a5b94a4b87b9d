#pragma once

namespace Trading {

/// Makes exchange time, Asia/Shanghai, the local time of this process, so that "today" is the same day as on
/// the charts, wherever the machine stands. To be called first in main(), before there are threads.
///
/// False where the machine has no data for that time zone: its clock would show UTC, and "today" would be
/// yesterday until eight in the morning. A program should say so and end.
[[nodiscard]] bool enterExchangeTime();

} // namespace Trading
