#pragma once

#include "terminal/data/DataFolder.h"

#include <optional>
#include <vector>

namespace Terminal {

class MinuteBook;
class Today;

/// The bars that charts can show: those of a data folder and, put together with them, those of today. A
/// replay is on its minute chart only, for a day long past does not belong after the days of a longer chart,
/// unless the account practises it: then nothing after it is known.
class ChartSource
{
public:
    /// `today` must outlive the source. It is given what the folder has of today's minutes.
    ChartSource(const DataFolder &folder, Today *today);

    /// The folder has other files now. What statements told of its securities stays known.
    void setFolder(const DataFolder &folder);

    /// The account practises `day`: whatever the folder has of it and of later days is not known yet. Charts
    /// of days and longer end with it, as far as its replay has come.
    void practise(Trading::TradingDate day);

    /// See DataFolder::setBookedActions().
    bool setBookedActions(const QString &code, const BookedActions &booked)
    {
        return m_folder.setBookedActions(code, booked);
    }

    const Securities &securities() const { return m_folder.securities(); }

    /// The days of `code` that minutes are known of, oldest first; today is the last one.
    std::vector<Trading::TradingDate> minuteDays(const QString &code) const;

    /// As DataFolder::load; the last day of a minute chart is today when anything is known of it, and charts
    /// of days and longer end with today. The minutes of today have today's prices, which are raw in each
    /// view.
    Loaded<ChartData> load(const QString &code, ChartPeriod period,
                           std::optional<Trading::TradingDate> day = {},
                           PriceView view = PriceView::Raw) const;

    /// The same bars in raw prices; none where they cannot be read any more.
    ChartData raw(const ChartData &shown) const;

    /// As DataFolder::closeBefore; before today it is what quotes told, and before a replay the close before
    /// the recorded day.
    std::optional<double> closeBefore(const QString &code, Trading::TradingDate day) const;

    /// The latest bar of `code` that the data folder has, of a day or of a minute; nothing when it has none.
    /// Quotes change nothing in it.
    std::optional<Bar> lastBar(const QString &code) const;

    /// The last bar of a chart of days or longer as it is now; nothing when it has nothing of today, or was
    /// loaded on another day: see turned().
    std::optional<Bar> barOfToday(const ChartData &shown) const;

    /// True for a chart of days or longer that was loaded on an earlier day than today.
    bool isOfAnEarlierDay(const ChartData &shown) const;
    /// Such a chart as it goes on today: with the days that are shown at the least, which the files need not
    /// have yet.
    ChartData turned(const ChartData &shown) const;

    /// Has Today know what minutes of today the data folder has.
    void fillToday(const QString &code) const;

    /// Changes when the files grow that today's bars of `code` come from.
    std::vector<FileStamp> stamps(const QString &code) const;

private:
    Loaded<ChartData> loadDays(const QString &code, ChartPeriod period, PriceView view) const;
    ChartData minutesOfToday(const Security &security) const;
    void endWithToday(ChartData *chart) const;
    bool knowsDaysOf(const ChartData &loaded, const ChartData &shown) const;
    Trading::TradingDate lastDay() const;
    const MinuteBook *todayOf(const QString &code) const;
    bool isToday(const QString &code, std::optional<Trading::TradingDate> day) const;

    DataFolder m_folder;
    Today *m_today;
    std::optional<Trading::TradingDate> m_practised;
};

} // namespace Terminal
