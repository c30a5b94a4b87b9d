#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/BookedAction.h"
#include "terminal/data/ChartPeriod.h"
#include "terminal/data/FileStamp.h"
#include "terminal/data/PriceAdjustment.h"
#include "terminal/data/PriceDecimals.h"
#include "terminal/data/PriceView.h"
#include "terminal/data/RecordedDays.h"
#include "terminal/data/SecurityList.h"
#include "trading/TradingDate.h"

#include <QDir>
#include <QHash>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Terminal {

class DailySheets;
struct BarSheet;

/// What a chart of days or longer has of the span that today is in, the quotes of today left aside.
struct SpanOfToday
{
    std::optional<Bar> before; ///< the days of the span before today, as one bar
    std::optional<Bar> row;    ///< today's row of the data folder
    /// Until when the row can tell of today: it was written then, at the latest.
    std::optional<Trading::ClockTime> rowTime;
    std::optional<Trading::TradingDate> day; ///< what counts as today here
};

/// What one chart shows: a security and its loaded bars.
struct ChartData
{
    Security security;
    ChartPeriod period = ChartPeriod::Day;
    Bars bars;
    /// Of a chart that grows: the minutes that its next bars will have. The time axis has room for them.
    std::vector<std::int32_t> ahead = {};
    /// Of a minute chart: the close of the trading day before, see DataFolder::closeBefore().
    std::optional<double> previousClose = {};
    int priceDecimals = usualPriceDecimals; ///< that its prices are shown with
    SpanOfToday today = {};                 ///< of a chart of days or longer, see ChartSource
    PriceView view = PriceView::Raw;        ///< of its bars and of previousClose
    PriceAdjustment adjustment = {};        ///< of the security, whichever view is shown
    QStringList remarks = {};               ///< what the user should know of the view's prices
    /// Of minutes that a replay plays as today's: the day that they were recorded on.
    std::optional<Trading::TradingDate> recorded = {};

    /// The bar as texts name it: what is replayed is dated today for overlays only.
    Bar told(Bar bar) const;

    /// A raw price of a day, as the chart shows it.
    double shownPrice(double price, Trading::TradingDate day) const;

    /// What the change of a bar is measured from, as the chart shows it: of a minute the close of the trading
    /// day before, else of the day's first open; of other bars the close of the bar before, of the first one
    /// its open. Over an ex-date it is the exchange's reference price. Requires a bar of the chart.
    double priceBefore(size_t bar) const;
};

/// The day of a minute chart; nothing for other periods, and without bars.
std::optional<Trading::TradingDate> shownDay(const ChartData &data);

/// A folder of market data: `securities.csv`, `daily/<code>.csv`, `minute/<code>_<yyyymmdd>.csv` and
/// `actions/<code>.csv`. Files are looked at each time that they are asked for: they may grow.
class DataFolder
{
public:
    static Loaded<DataFolder> open(const QString &path);

    const Securities &securities() const { return m_securities; }

    /// What the account's statements tell of a security's corporate actions; it is added to those of its file
    /// in charts that are loaded from now on. False when it was known.
    bool setBookedActions(const QString &code, const BookedActions &booked);

    /// Takes over what statements told another folder.
    void keepBookedActions(const DataFolder &other) { m_booked = other.m_booked; }

    /// Has the folder tell nothing of `day` and later ones from now on, as if they had not come yet.
    void endBefore(Trading::TradingDate day) { m_end = day; }

    /// The recorded days of `code`, oldest first.
    std::vector<Trading::TradingDate> minuteDays(const QString &code) const;

    /// Loads the bars of a security. `day` names the day of a minute chart, nothing meaning the
    /// last recorded one; other periods ignore it. A file of corporate actions that cannot be read makes
    /// the adjusted view fail, and is a remark in the raw one.
    Loaded<ChartData> load(const QString &code, ChartPeriod period,
                           std::optional<Trading::TradingDate> day = {},
                           PriceView view = PriceView::Raw) const;

    /// The last price of the trading day before `day`, by which a day's price limits go: from the daily
    /// bars or from the minutes of a recorded day, whichever day is later. On an ex-date it is the exchange's
    /// reference price. Null where the folder has no bar within the longest closure of the exchange before
    /// `day`: an older price says nothing.
    std::optional<double> closeBefore(const QString &code, Trading::TradingDate day) const;

    /// What the file of the daily bars and that of a day's minutes look like now.
    FileStamp dailyStamp(const QString &code) const;
    FileStamp minuteStamp(const QString &code, Trading::TradingDate day) const;

private:
    QString minuteFile(const QString &code, Trading::TradingDate day) const;
    QString dailyFile(const QString &code) const;
    Bars dailyBars(const QString &code) const;
    Loaded<BarSheet> withoutFuture(const BarSheet &sheet, const QString &code) const;
    Bars lastRecordedDayBefore(const QString &code, Trading::TradingDate day) const;
    std::optional<Bar> lastBarBefore(const QString &code, const Bars &daily, Trading::TradingDate day) const;
    std::optional<double> closeBefore(const QString &code, Trading::TradingDate day,
                                      const PriceAdjustment &adjustment, int decimals) const;
    /// By the actions up to the last bar and, where that is the close before it, up to `day`.
    KnownAdjustment adjustmentOf(const QString &code, Trading::TradingDate day) const;
    void adjustBy(const CorporateActions &actions, const QString &code, Trading::TradingDate day,
                  KnownAdjustment *known) const;
    void takeBars(const Bars &bars, ChartData *data) const;
    /// Raw; of days for weeks and months, too.
    Loaded<BarSheet> loadBars(const QString &code, ChartPeriod period,
                              std::optional<Trading::TradingDate> day) const;
    std::shared_ptr<const Loaded<BarSheet>> dailySheet(const QString &code) const;
    Loaded<BarSheet> loadMinutes(const QString &code, std::optional<Trading::TradingDate> day) const;

    QDir m_dir;
    Securities m_securities;
    QHash<QString, BookedActions> m_booked; ///< by code
    mutable RecordedDays m_recordedDays;    ///< what was listed of the folder last
    std::shared_ptr<DailySheets> m_dailySheets;
    std::optional<Trading::TradingDate> m_end; ///< the first day that nothing is told of
};

} // namespace Terminal
