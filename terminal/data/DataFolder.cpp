#include "terminal/data/DataFolder.h"

#include "terminal/data/ActionFile.h"
#include "terminal/data/BarAggregation.h"
#include "terminal/data/BarFile.h"
#include "terminal/data/BarRemarks.h"
#include "terminal/data/DailySheets.h"
#include "terminal/data/TradingHours.h"

#include <QCoreApplication>

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

/// The last bar before `day`; nothing when there is none.
std::optional<Bar> lastBefore(Trading::TradingDate day, const Bars &bars)
{
    const auto next = std::lower_bound(bars.begin(), bars.end(), day.number(),
                                       [](const Bar &bar, std::int32_t date) { return bar.date < date; });
    return next == bars.begin() ? std::nullopt : std::optional(*std::prev(next));
}

/// True where nothing was traded between the bar and `day`, as far as bars can tell.
bool isCloseBefore(Trading::TradingDate day, const Bar &bar)
{
    return day <= dayOf(bar).plusDays(longestClosure);
}

} // namespace

double ChartData::shownPrice(double price, Trading::TradingDate day) const
{
    return view == PriceView::Adjusted ? price * adjustment.factorOn(day) : price;
}

double ChartData::priceBefore(size_t bar) const
{
    if (period == ChartPeriod::Minute) {
        return previousClose.value_or(bars.front().open);
    }
    if (bar == 0) {
        return bars.front().open;
    }
    const Trading::TradingDate before = dayOf(bars[bar - 1]);
    const Trading::TradingDate day = dayOf(bars[bar]);
    const double rawClose = bars[bar - 1].close / shownPrice(1, before);
    return shownPrice(adjustment.referencePrice(rawClose, before, day, priceDecimals), day);
}

Bar ChartData::told(Bar bar) const
{
    bar.date = recorded ? recorded->number() : bar.date;
    return bar;
}

std::optional<Trading::TradingDate> shownDay(const ChartData &data)
{
    const bool isOneDay = data.period == ChartPeriod::Minute && !data.bars.empty();
    return isOneDay ? std::optional(dayOf(data.bars.back())) : std::nullopt;
}

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
    folder.m_dailySheets = std::make_shared<DailySheets>();
    folder.m_recordedDays = RecordedDays(folder.m_dir.filePath(QStringLiteral("minute")));
    return folder;
}

bool DataFolder::setBookedActions(const QString &code, const BookedActions &booked)
{
    if (m_booked.value(code) == booked) {
        return false;
    }
    m_booked[code] = booked;
    return true;
}

std::vector<Trading::TradingDate> DataFolder::minuteDays(const QString &code) const
{
    std::vector<Trading::TradingDate> days = m_recordedDays.of(code);
    if (m_end) {
        days.erase(std::lower_bound(days.begin(), days.end(), *m_end), days.end());
    }
    return days;
}

Loaded<ChartData> DataFolder::load(const QString &code, ChartPeriod period,
                                   std::optional<Trading::TradingDate> day, PriceView view) const
{
    const Security *const security = findSecurity(m_securities, code);
    if (security == nullptr) {
        return Loaded<ChartData>::failure(
            text("there is no security %1; known are: %2").arg(code, codesOf(m_securities)));
    }
    const auto sheet = loadBars(code, period, day);
    if (!sheet) {
        return Loaded<ChartData>::failure(sheet.error());
    }
    const Bars &bars = sheet.value().bars;
    const KnownAdjustment known = adjustmentOf(code, m_end.value_or(Trading::TradingDate::today()));
    if (!known.error.isEmpty() && view == PriceView::Adjusted) {
        return Loaded<ChartData>::failure(known.error);
    }
    ChartData data{*security, period, {}};
    data.view = view;
    data.adjustment = known.adjustment;
    data.priceDecimals = priceDecimals(bars);
    if (view == PriceView::Raw) {
        data.remarks = barRemarks(sheet.value());
    }
    if (!known.error.isEmpty()) {
        data.remarks.append(known.error);
    } else if (view == PriceView::Adjusted) {
        data.remarks += known.remarks;
    }
    takeBars(bars, &data);
    return data;
}

void DataFolder::takeBars(const Bars &bars, ChartData *data) const
{
    const bool isAdjusted = data->view == PriceView::Adjusted;
    data->bars = joinDays(isAdjusted ? data->adjustment.adjusted(bars) : bars, data->period);
    if (data->period == ChartPeriod::Minute) {
        const Trading::TradingDate day = dayOf(bars.front());
        const auto close = closeBefore(data->security.code, day, data->adjustment, data->priceDecimals);
        data->previousClose = close ? std::optional(data->shownPrice(*close, day)) : std::nullopt;
    }
}

Loaded<BarSheet> DataFolder::loadBars(const QString &code, ChartPeriod period,
                                      std::optional<Trading::TradingDate> day) const
{
    return period == ChartPeriod::Minute ? loadMinutes(code, day) : *dailySheet(code);
}

std::shared_ptr<const Loaded<BarSheet>> DataFolder::dailySheet(const QString &code) const
{
    const DailySheets::Sheet sheet = m_dailySheets->read(dailyFile(code), withMarket(code, m_securities));
    return m_end && *sheet ? std::make_shared<const Loaded<BarSheet>>(withoutFuture(sheet->value(), code))
                           : sheet;
}

Loaded<BarSheet> DataFolder::withoutFuture(const BarSheet &sheet, const QString &code) const
{
    BarSheet past = sheet;
    const auto future = std::find_if(past.bars.begin(), past.bars.end(),
                                     [this](const Bar &bar) { return dayOf(bar) >= *m_end; });
    past.bars.erase(future, past.bars.end());
    return past.bars.empty() ? Loaded<BarSheet>::failure(
                                   text("%1: there are no bars before %2").arg(code, m_end->dashedText()))
                             : Loaded<BarSheet>(past);
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
    return FileStamp::of(dailyFile(code));
}

FileStamp DataFolder::minuteStamp(const QString &code, Trading::TradingDate day) const
{
    return FileStamp::of(minuteFile(code, day));
}

/// None where they cannot be read.
Bars DataFolder::dailyBars(const QString &code) const
{
    return dailySheet(code)->value().bars;
}

KnownAdjustment DataFolder::adjustmentOf(const QString &code, Trading::TradingDate day) const
{
    const auto ofFile = readActionFile(m_dir.filePath(QStringLiteral("actions/%1.csv").arg(code)),
                                       SecurityCode::of(withMarket(code, m_securities)));
    const KnownActions told = knownActions(ofFile.value(), m_booked.value(code));
    KnownAdjustment known;
    known.error = ofFile.error();
    known.remarks = told.remarks;
    if (ofFile && !told.actions.empty()) {
        adjustBy(told.actions, code, day, &known);
    }
    return known;
}

void DataFolder::adjustBy(const CorporateActions &actions, const QString &code, Trading::TradingDate day,
                          KnownAdjustment *known) const
{
    const DailySheets::Sheet sheet = dailySheet(code);
    const BarSheet &daily = sheet->value();
    if (daily.prices == PriceKind::Adjusted) {
        known->remarks.append(
            text("%1: its prices are adjusted already, so they are shown as they are").arg(dailyFile(code)));
        return;
    }
    const auto lastBar = [&](Trading::TradingDate next) { return lastBarBefore(code, daily.bars, next); };
    if (const auto latest = lastBar(Trading::TradingDate::last())) {
        const auto lastDay = isCloseBefore(day, *latest) ? std::max(day, dayOf(*latest)) : dayOf(*latest);
        const auto adjustment = PriceAdjustment::of(actions, lastDay, lastBar);
        known->error = adjustment.error();
        known->adjustment = adjustment.value();
    }
}

Bars DataFolder::lastRecordedDayBefore(const QString &code, Trading::TradingDate day) const
{
    const std::vector<Trading::TradingDate> days = minuteDays(code);
    const auto next = std::lower_bound(days.begin(), days.end(), day);
    return next == days.begin() ? Bars() : loadMinutes(code, *std::prev(next)).value().bars;
}

/// Of a day or, where its minutes are of a later one, of a minute.
std::optional<Bar> DataFolder::lastBarBefore(const QString &code, const Bars &daily,
                                             Trading::TradingDate day) const
{
    const auto ofDays = lastBefore(day, daily);
    const auto ofMinutes = lastBefore(day, lastRecordedDayBefore(code, day));
    return ofMinutes && (!ofDays || ofMinutes->date > ofDays->date) ? ofMinutes : ofDays;
}

std::optional<double> DataFolder::closeBefore(const QString &code, Trading::TradingDate day) const
{
    return closeBefore(code, day, adjustmentOf(code, day).adjustment, priceDecimals(dailyBars(code)));
}

std::optional<double> DataFolder::closeBefore(const QString &code, Trading::TradingDate day,
                                              const PriceAdjustment &adjustment, int decimals) const
{
    const auto last = lastBarBefore(code, dailyBars(code), day);
    return last && isCloseBefore(day, *last)
               ? std::optional(adjustment.referencePrice(last->close, dayOf(*last), day, decimals))
               : std::nullopt;
}

Loaded<BarSheet> DataFolder::loadMinutes(const QString &code, std::optional<Trading::TradingDate> day) const
{
    const std::vector<Trading::TradingDate> days = minuteDays(code);
    if (!day && !days.empty()) {
        day = days.back();
    }
    if (!day || (m_end && *day >= *m_end)) {
        return Loaded<BarSheet>::failure(text("%1: there are no minute bars of %2").arg(m_dir.path(), code));
    }
    const auto minutes =
        readMinuteSheet(minuteFile(code, *day), day->number(), withMarket(code, m_securities));
    if (!minutes) {
        return minutes;
    }
    BarSheet sheet = minutes.value();
    sheet.bars = withAuctionBar(sheet.bars);
    return sheet;
}

} // namespace Terminal
