#include "terminal/data/DataFolder.h"

#include "terminal/data/BarAggregation.h"
#include "terminal/data/BarFile.h"
#include "terminal/data/TradingHours.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace Terminal {

namespace {

/// Calendar days from one trading day to the next, at most: a spring festival with its week-ends.
constexpr int longestClosure = 12;

QString text(const char *source)
{
    return QCoreApplication::translate("DataFolder", source);
}

QString codesOf(const Securities &securities)
{
    QStringList codes;
    for (const Security &security : securities) {
        codes.append(security.code);
    }
    return codes.join(QStringLiteral(", "));
}

/// As files name it: "600519.SH".
QString withMarket(const QString &code, const Securities &securities)
{
    const Security *const security = findSecurity(securities, code);
    return security == nullptr ? code : code + QLatin1Char('.') + Trading::marketLetters(security->market);
}

FileStamp stampOf(const QString &file)
{
    const QFileInfo info(file);
    return {info.lastModified(), info.size()};
}

/// The last bar before `day`; a bar without a date when there is none.
Bar lastBefore(Trading::TradingDate day, const Bars &bars)
{
    const auto next = std::lower_bound(bars.begin(), bars.end(), day.number(),
                                       [](const Bar &bar, std::int32_t date) { return bar.date < date; });
    return next == bars.begin() ? Bar() : *std::prev(next);
}

} // namespace

Loaded<DataFolder> DataFolder::open(const QString &path)
{
    DataFolder folder;
    folder.m_dir = QDir(path);
    if (!folder.m_dir.exists()) {
        return Loaded<DataFolder>::failure(text("%1: there is no such folder").arg(path));
    }
    const auto securities = readSecurities(folder.m_dir.filePath(QStringLiteral("securities.csv")));
    if (!securities) {
        return Loaded<DataFolder>::failure(securities.error());
    }
    folder.m_securities = securities.value();
    folder.m_recordedDays = RecordedDays(folder.m_dir.filePath(QStringLiteral("minute")));
    return folder;
}

std::vector<Trading::TradingDate> DataFolder::minuteDays(const QString &code) const
{
    return m_recordedDays.of(code);
}

Loaded<ChartData> DataFolder::load(const QString &code, ChartPeriod period,
                                   std::optional<Trading::TradingDate> day) const
{
    const Security *const security = findSecurity(m_securities, code);
    if (security == nullptr) {
        return Loaded<ChartData>::failure(
            text("there is no security %1; known are: %2").arg(code, codesOf(m_securities)));
    }
    const auto bars = loadBars(code, period, day);
    if (!bars) {
        return Loaded<ChartData>::failure(bars.error());
    }
    ChartData data{*security, period, bars.value()};
    data.priceDecimals = priceDecimals(data.bars);
    if (period == ChartPeriod::Minute) {
        data.previousClose = closeBefore(code, dayOf(data.bars.front()));
    }
    return data;
}

Loaded<Bars> DataFolder::loadBars(const QString &code, ChartPeriod period,
                                  std::optional<Trading::TradingDate> day) const
{
    if (period == ChartPeriod::Minute) {
        return loadMinutes(code, day);
    }
    const auto days = readDailyBars(dailyFile(code), withMarket(code, m_securities));
    return days ? Loaded<Bars>(joinDays(days.value(), period)) : days;
}

QString DataFolder::dailyFile(const QString &code) const
{
    return m_dir.filePath(QStringLiteral("daily/%1.csv").arg(code));
}

QString DataFolder::minuteFile(const QString &code, Trading::TradingDate day) const
{
    return m_dir.filePath(QStringLiteral("minute/%1_%2.csv").arg(code, day.text()));
}

FileStamp DataFolder::dailyStamp(const QString &code) const
{
    return stampOf(dailyFile(code));
}

FileStamp DataFolder::minuteStamp(const QString &code, Trading::TradingDate day) const
{
    return stampOf(minuteFile(code, day));
}

Bars DataFolder::lastRecordedDayBefore(const QString &code, Trading::TradingDate day) const
{
    const std::vector<Trading::TradingDate> days = minuteDays(code);
    const auto next = std::lower_bound(days.begin(), days.end(), day);
    return next == days.begin() ? Bars() : loadMinutes(code, *std::prev(next)).value();
}

std::optional<double> DataFolder::closeBefore(const QString &code, Trading::TradingDate day) const
{
    const Bar daily = lastBefore(day, readDailyBars(dailyFile(code), withMarket(code, m_securities)).value());
    const Bar minute = lastBefore(day, lastRecordedDayBefore(code, day));
    const Bar &last = minute.date > daily.date ? minute : daily;
    const bool isRecent = last.date > 0 && day <= dayOf(last).plusDays(longestClosure);
    return isRecent ? std::optional(last.close) : std::nullopt;
}

Loaded<Bars> DataFolder::loadMinutes(const QString &code, std::optional<Trading::TradingDate> day) const
{
    const std::vector<Trading::TradingDate> days = minuteDays(code);
    if (!day && !days.empty()) {
        day = days.back();
    }
    if (!day) {
        return Loaded<Bars>::failure(text("%1: there are no minute bars of %2").arg(m_dir.path(), code));
    }
    auto minutes = readMinuteBars(minuteFile(code, *day), day->number(), withMarket(code, m_securities));
    return minutes ? Loaded<Bars>(withAuctionBar(minutes.value())) : minutes;
}

} // namespace Terminal
