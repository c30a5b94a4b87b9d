#pragma once

#include "terminal/data/CorporateAction.h"

#include <QStringList>

#include <vector>

namespace Terminal {

/// What the account received of a security on one day, as its statements booked it.
struct BookedAction
{
    Trading::TradingDate day;
    qint64 held = 0; ///< shares, for which it was received
    Trading::Money cash{};
    qint64 bonus = 0; ///< shares for nothing; below 0 where shares were put together

    friend bool operator==(const BookedAction &a, const BookedAction &b)
    {
        return a.day == b.day && a.held == b.held && a.cash == b.cash && a.bonus == b.bonus;
    }
};

/// Oldest first, one for each day.
using BookedActions = std::vector<BookedAction>;

/// The actions of a security from both that tell of them.
struct KnownActions
{
    CorporateActions actions;
    QStringList remarks; ///< where they contradict, and what could not be used
};

/// The actions of a file, and those that statements booked on other days. A statement tells what was received
/// for all shares: it is taken only where that makes a figure for one share of four decimals at most, and the
/// day on which it was booked for the ex-date. What is booked within two months after an ex-date of the file
/// is that action, received late. Where both tell of one day the file holds, and what differs is remarked.
KnownActions knownActions(CorporateActions ofFile, const BookedActions &booked);

} // namespace Terminal
