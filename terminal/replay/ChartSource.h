#pragma once

#include "terminal/data/DataFolder.h"

#include <optional>
#include <vector>

namespace Terminal {

class Replay;

/// The bars that charts can show: those of a data folder and, while a day is replayed, today's.
class ChartSource
{
public:
    /// `replay` must outlive the source.
    ChartSource(const DataFolder &folder, const Replay *replay);

    /// The folder has other files now. What statements told of its securities stays known.
    void setFolder(const DataFolder &folder);

    /// See DataFolder::setBookedActions().
    bool setBookedActions(const QString &code, const BookedActions &booked)
    {
        return m_folder.setBookedActions(code, booked);
    }

    const Securities &securities() const { return m_folder.securities(); }

    /// The recorded days of `code`, oldest first; today is the last one while it is replayed.
    std::vector<Trading::TradingDate> minuteDays(const QString &code) const;

    /// As DataFolder::load; the last day of a minute chart is today while it is replayed. A replayed day has
    /// today's prices, which are raw in each view.
    Loaded<ChartData> load(const QString &code, ChartPeriod period,
                           std::optional<Trading::TradingDate> day = {},
                           PriceView view = PriceView::Raw) const;

    /// The same bars in raw prices; none where they cannot be read any more.
    ChartData raw(const ChartData &shown) const;

    /// As DataFolder::closeBefore; before a replayed today it is the close before the recorded day.
    std::optional<double> closeBefore(const QString &code, Trading::TradingDate day) const;

    /// The latest bar of `code` that the data folder has, of a day or of a minute; nothing when it has none.
    /// A replay changes nothing in it.
    std::optional<Bar> lastBar(const QString &code) const;

private:
    bool replays(const QString &code) const;
    bool isReplayed(const QString &code, Trading::TradingDate day) const;
    Trading::TradingDate replayedDate() const;

    DataFolder m_folder;
    const Replay *m_replay;
};

} // namespace Terminal
