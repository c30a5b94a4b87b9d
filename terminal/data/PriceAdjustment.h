#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/CorporateAction.h"
#include "terminal/data/Loaded.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace Terminal {

/// How the prices of a security before its ex-dates compare with those after the last one: one factor for
/// each day. All that a chart shows in adjusted prices, and every change over an ex-date, comes from here.
class PriceAdjustment
{
public:
    /// The last bar before a day; nothing when there is none.
    using LastBarBefore = std::function<std::optional<Bar>(Trading::TradingDate day)>;

    PriceAdjustment() = default; ///< nothing has happened: each price is its own

    /// Of the actions that bars know of: one after `lastDay`, that of the last bar, has not happened yet,
    /// and one without a bar before it changes nothing. Fails for a dividend as high as the price before it.
    static Loaded<PriceAdjustment> of(const CorporateActions &actions, Trading::TradingDate lastDay,
                                      const LastBarBefore &lastBarBefore);

    bool isEmpty() const { return m_steps.empty(); }

    /// What prices of a day are to be multiplied by; 1 from the last ex-date on.
    double factorOn(Trading::TradingDate day) const;

    /// Bars of days or minutes with their prices adjusted. Volumes stay what changed hands.
    Bars adjusted(Bars bars) const;

    /// The price that the change of `day` is measured from, where `close` was the last one before it, on the
    /// day `before`; both raw. Over an ex-date it is the exchange's reference price, in `decimals` decimals.
    double referencePrice(double close, Trading::TradingDate before, Trading::TradingDate day,
                          int decimals) const;

    friend bool operator==(const PriceAdjustment &a, const PriceAdjustment &b)
    {
        return a.m_steps == b.m_steps;
    }

private:
    /// From the ex-date of the step before to the day before its own, prices have this factor.
    struct Step
    {
        Trading::TradingDate exDate;
        double factor;

        friend bool operator==(const Step &a, const Step &b)
        {
            return a.exDate == b.exDate && a.factor == b.factor;
        }
    };

    std::vector<Step> m_steps; ///< oldest first
};

/// What is known of the adjustment of a security.
struct KnownAdjustment
{
    PriceAdjustment adjustment;
    QString error;       ///< why there is none; empty when there is nothing wrong
    QStringList remarks; ///< what the user should know of it
};

} // namespace Terminal
