#pragma once

#include <QString>

namespace Terminal {

/// Which prices a chart shows.
enum class PriceView {
    Raw,     ///< 不复权: as they were paid
    Adjusted ///< 前复权: those before an ex-date as they compare with today's
};

/// The title that the user reads, translated; empty for raw prices, which are what everybody expects.
QString viewTitle(PriceView view);

} // namespace Terminal
