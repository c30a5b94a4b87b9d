#include "trading/MarketRules.h"

#include "trading/TradingUnits.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Trading::MarketRules {

namespace {

/// Several kinds of securities.
class Kinds
{
public:
    template <typename... Kind>
    // NOLINTNEXTLINE(google-explicit-constructor): a kind is a set of one
    constexpr Kinds(Kind... kinds) : m_bits((bit(kinds) | ... | 0U))
    {
    }

    constexpr bool contain(SecurityKind kind) const { return (m_bits & bit(kind)) != 0; }

    static constexpr Kinds all()
    {
        Kinds kinds;
        kinds.m_bits = ~0U;
        return kinds;
    }
    constexpr bool areAll() const { return m_bits == ~0U; }

private:
    static constexpr unsigned bit(SecurityKind kind) { return 1U << static_cast<unsigned>(kind); }

    unsigned m_bits;
};

/// What a row is for, how long it is in force, and whence it is known.
struct Scope
{
    Kinds kinds;
    std::optional<Market> market; ///< nothing: of each
    int from = 0;                 ///< yyyymmdd
    int until = 0;                ///< its last day
    const char *source = nullptr;
    Evidence evidence = Evidence::Reported;
};

/// Of what the rules are asked.
struct Subject
{
    SecurityKind kind;
    Market market;
    TradingDate day;
    ListingStage stage = ListingStage::Later;
};

struct LimitRow
{
    Scope scope;
    LimitShare share;                         ///< nothing up: no limit
    ListingStage until = ListingStage::Later; ///< its last one of a listing
};

constexpr LimitShare percent(int both)
{
    return {both * 10, both * 10};
}

constexpr LimitShare withoutLimit;

struct QuantityRow
{
    Scope scope;
    Money tick;
    qint64 least;
    qint64 step;
    qint64 most;
};

struct HoursRow
{
    Scope scope;
    DayState part;
    ClockTime begin;
    ClockTime end;
};

using Kind = SecurityKind;
using Stage = ListingStage;

constexpr int ever = 10101;
constexpr int stillNow = 99991231;
constexpr std::optional<Market> eachMarket;
constexpr std::optional<Market> shanghai = Market::Shanghai;
constexpr std::optional<Market> shenzhen = Market::Shenzhen;
constexpr std::optional<Market> beijing = Market::Beijing;

constexpr Evidence checked = Evidence::Checked;
constexpr Evidence reported = Evidence::Reported;

constexpr const char limitOf1996[] = "关于对股票和基金交易实行价格涨跌幅限制的通知 (1996)";
constexpr const char tradingRules[] = "沪深证券交易所交易规则";
constexpr const char starRules[] = "上海证券交易所科创板股票交易特别规定 (2019)";
constexpr const char chiNextRules[] = "深圳证券交易所创业板交易特别规定 (2020)";
constexpr const char beijingRules[] = "北京证券交易所交易规则（试行） (2021)";
constexpr const char convertibleRules[] = "可转换公司债券交易实施细则 (2022)";
constexpr const char bondRules[] = "沪深证券交易所债券交易规则 (2022)";
constexpr const char rulesOf2023[] = "沪深证券交易所交易规则 (2023)";
constexpr const char rulesOf2026[] = "told of the trading rules of July 2026";

constexpr Kinds youngFunds{Kind::YoungBoardFund};
constexpr Kinds funds{Kind::Fund, Kind::YoungBoardFund};
constexpr Kinds newInOldWay{Kind::MainShare, Kind::ChiNextShare};
constexpr Kinds mainShares{Kind::MainShare, Kind::SpecialTreatment};
constexpr Kinds shanghaiShares{Kind::MainShare, Kind::SpecialTreatment, Kind::StarShare, Kind::ForeignShare};
constexpr Kinds auctionedInShenzhen{
    Kind::MainShare, Kind::SpecialTreatment, Kind::ChiNextShare,   Kind::ForeignShare,
    Kind::Fund,      Kind::YoungBoardFund,   Kind::ConvertibleBond};

constexpr Money thousandth = Money::ofSteps(10);
constexpr qint64 million = 1000000;

// Of the rows that fit a security on a day, the first one counts.

constexpr LimitRow limitRows[] = {
    {{Kind::StarShare, eachMarket, 20190722, stillNow, starRules, checked}, withoutLimit, Stage::FirstDays},
    {{Kind::ChiNextShare, eachMarket, 20200824, stillNow, chiNextRules, checked},
     withoutLimit,
     Stage::FirstDays},
    {{Kind::MainShare, eachMarket, 20230410, stillNow, rulesOf2023, checked}, withoutLimit, Stage::FirstDays},
    {{newInOldWay, eachMarket, 20140101, 20230409, tradingRules, reported}, {360, 440}, Stage::FirstDay},
    {{Kind::BeijingShare, eachMarket, 20211115, stillNow, beijingRules, reported},
     withoutLimit,
     Stage::FirstDay},
    {{Kind::ConvertibleBond, eachMarket, 20220801, stillNow, convertibleRules, reported},
     {433, 573},
     Stage::FirstDay},
    {{Kind::MainShare, eachMarket, 19961216, stillNow, limitOf1996, checked}, percent(10)},
    {{Kind::SpecialTreatment, eachMarket, 19980422, 20260705, tradingRules, reported}, percent(5)},
    {{Kind::SpecialTreatment, eachMarket, 20260706, stillNow, rulesOf2026, reported}, percent(10)},
    {{Kind::StarShare, eachMarket, 20190722, stillNow, starRules, checked}, percent(20)},
    {{Kind::ChiNextShare, eachMarket, 20091030, 20200823, limitOf1996, reported}, percent(10)},
    {{Kind::ChiNextShare, eachMarket, 20200824, stillNow, chiNextRules, checked}, percent(20)},
    {{Kind::BeijingShare, eachMarket, 20211115, stillNow, beijingRules, checked}, percent(30)},
    {{Kind::ForeignShare, eachMarket, 19961216, stillNow, limitOf1996, reported}, percent(10)},
    {{Kind::Fund, eachMarket, 19961216, stillNow, limitOf1996, reported}, percent(10)},
    {{youngFunds, shanghai, 20201116, stillNow, tradingRules, reported}, percent(20)},
    {{youngFunds, shenzhen, 20200824, stillNow, chiNextRules, reported}, percent(20)},
    {{youngFunds, eachMarket, 19961216, stillNow, limitOf1996, reported}, percent(10)},
    {{Kind::ConvertibleBond, eachMarket, 20220801, stillNow, convertibleRules, reported}, percent(20)},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, reported}, withoutLimit},
};

constexpr QuantityRow quantityRows[] = {
    {{Kind::StarShare, eachMarket, 20190722, stillNow, starRules, checked}, priceStep, 200, 1, 100000},
    {{Kind::ChiNextShare, eachMarket, 20200824, stillNow, chiNextRules, checked},
     priceStep,
     sharesOfLot,
     sharesOfLot,
     300000},
    {{Kind::BeijingShare, eachMarket, 20211115, stillNow, beijingRules, reported},
     priceStep,
     100,
     1,
     million},
    {{Kind::ForeignShare, shanghai, ever, stillNow, tradingRules, reported}, thousandth, 100, 100, million},
    {{funds, eachMarket, 20030303, stillNow, tradingRules, reported}, thousandth, 100, 100, million},
    {{Kind::ConvertibleBond, shanghai, ever, 20220731, tradingRules, reported}, priceStep, 10, 10, million},
    {{Kind::ConvertibleBond, eachMarket, ever, stillNow, convertibleRules, reported},
     thousandth,
     10,
     10,
     million},
    {{Kind::Bond, shanghai, ever, 20220515, tradingRules, reported}, priceStep, 10, 10, million},
    {{Kind::Bond, eachMarket, ever, stillNow, bondRules, reported}, thousandth, 10, 10, million},
    {{Kind::Repo, eachMarket, ever, stillNow, bondRules, reported}, Money::ofSteps(50), 10, 10, million},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     priceStep,
     sharesOfLot,
     sharesOfLot,
     million},
};

constexpr ClockTime at(int hour, int minute)
{
    return ClockTime::of(hour, minute).value();
}

// Of the rows that fit a security, a day and a time, ends included, the first one counts: trading comes
// before breaks.
constexpr HoursRow hoursRows[] = {
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     DayState::OpeningAuction,
     at(9, 15),
     at(9, 25)},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     DayState::Morning,
     at(9, 30),
     at(11, 30)},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     DayState::BeforeMorning,
     at(9, 25),
     at(9, 30)},
    {{auctionedInShenzhen, shenzhen, 20060701, stillNow, tradingRules, checked},
     DayState::ClosingAuction,
     at(14, 57),
     at(15, 0)},
    {{shanghaiShares, shanghai, 20180820, stillNow, tradingRules, reported},
     DayState::ClosingAuction,
     at(14, 57),
     at(15, 0)},
    {{Kind::BeijingShare, beijing, 20211115, stillNow, beijingRules, checked},
     DayState::ClosingAuction,
     at(14, 57),
     at(15, 0)},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     DayState::Afternoon,
     at(13, 0),
     at(15, 0)},
    {{Kinds::all(), eachMarket, ever, stillNow, tradingRules, checked},
     DayState::NoonBreak,
     at(11, 30),
     at(13, 0)},
    {{Kind::StarShare, shanghai, 20190722, stillNow, starRules, checked},
     DayState::AfterHours,
     at(15, 5),
     at(15, 30)},
    {{Kind::ChiNextShare, shenzhen, 20200824, stillNow, chiNextRules, checked},
     DayState::AfterHours,
     at(15, 5),
     at(15, 30)},
    {{mainShares, eachMarket, 20260706, stillNow, rulesOf2026, reported},
     DayState::AfterHours,
     at(15, 5),
     at(15, 30)},
};

bool fits(const Scope &scope, const Subject &subject)
{
    return scope.kinds.contain(subject.kind) && (!scope.market || *scope.market == subject.market) &&
           subject.day.number() >= scope.from && subject.day.number() <= scope.until;
}

bool fits(const LimitRow &row, const Subject &subject)
{
    return fits(row.scope, subject) && subject.stage <= row.until;
}

bool fits(const QuantityRow &row, const Subject &subject)
{
    return fits(row.scope, subject);
}

/// The last row of each table but that of hours fits everything.
template <typename Row, std::size_t count>
const Row &firstFor(const Subject &subject, const Row (&table)[count])
{
    return *std::find_if(std::begin(table), std::prev(std::end(table)),
                         [&subject](const Row &row) { return fits(row, subject); });
}

bool isWithin(const HoursRow &row, ClockTime time)
{
    return time >= row.begin && time <= row.end;
}

DayState stateBetween(const Subject &subject, ClockTime time)
{
    if (time < std::begin(hoursRows)->begin) {
        return DayState::BeforeOpen;
    }
    const bool goesOn = std::any_of(std::begin(hoursRows), std::end(hoursRows), [&](const HoursRow &row) {
        return fits(row.scope, subject) && time < row.begin;
    });
    return goesOn ? DayState::AfterClose : DayState::Closed;
}

DayState stateOf(const Subject &subject, ClockTime time)
{
    const auto *const row =
        std::find_if(std::begin(hoursRows), std::end(hoursRows), [&](const HoursRow &hours) {
            return fits(hours.scope, subject) && isWithin(hours, time);
        });
    return row == std::end(hoursRows) ? stateBetween(subject, time) : row->part;
}

} // namespace

SecurityRules of(const SecurityId &security, TradingDate day, const QString &name)
{
    const Subject subject{kindOf(security, name), security.market, day, listingStageOf(name)};
    const LimitRow &limit = firstFor(subject, limitRows);
    const QuantityRow &quantity = firstFor(subject, quantityRows);
    SecurityRules rules;
    rules.tick = quantity.tick;
    rules.leastQuantity = quantity.least;
    rules.quantityStep = quantity.step;
    rules.mostQuantity = quantity.most;
    rules.limit = limit.share == withoutLimit ? std::nullopt : std::optional(limit.share);
    rules.areReported =
        limit.scope.evidence == Evidence::Reported || quantity.scope.evidence == Evidence::Reported;
    return rules;
}

int decimals(const SecurityId &security, const QString &name)
{
    const SecurityKind kind = kindOf(security, name);
    SecurityRules finest;
    for (const QuantityRow &row : quantityRows) {
        const bool isOf = row.scope.kinds.contain(kind) && !row.scope.kinds.areAll() &&
                          (!row.scope.market || *row.scope.market == security.market);
        finest.tick = isOf ? std::min(finest.tick, row.tick) : finest.tick;
    }
    return finest.decimals();
}

DayState stateOnTradingDay(const SecurityId &security, TradingDate day, ClockTime time, const QString &name)
{
    return stateOf({kindOf(security, name), security.market, day}, time);
}

DayState stateAt(const SecurityId &security, TradingDate day, ClockTime time, const TradingCalendar &calendar,
                 const QString &name)
{
    return calendar.isTradingDay(day) ? stateOnTradingDay(security, day, time, name) : DayState::Closed;
}

DayState stateOnTradingDay(TradingDate day, ClockTime time)
{
    return stateOf({SecurityKind::MainShare, Market::Shanghai, day}, time);
}

DayState stateAt(TradingDate day, ClockTime time, const TradingCalendar &calendar)
{
    return calendar.isTradingDay(day) ? stateOnTradingDay(day, time) : DayState::Closed;
}

namespace {

struct KindName
{
    SecurityKind kind;
    const char *name;
};

constexpr KindName kindNames[] = {
    {Kind::MainShare, "shares of the main boards"},
    {Kind::SpecialTreatment, "shares under special treatment (ST)"},
    {Kind::StarShare, "shares of 科创板 (688, 689)"},
    {Kind::ChiNextShare, "shares of 创业板 (30)"},
    {Kind::BeijingShare, "shares of Beijing"},
    {Kind::ForeignShare, "B shares"},
    {Kind::Fund, "funds"},
    {Kind::YoungBoardFund, "funds of 科创板 or 创业板"},
    {Kind::Bond, "bonds"},
    {Kind::ConvertibleBond, "convertible bonds"},
    {Kind::Repo, "repos"},
    {Kind::Other, "rights and applications"},
};

QString textOf(Kinds kinds)
{
    QStringList names;
    for (const KindName &row : kindNames) {
        if (!kinds.areAll() && kinds.contain(row.kind)) {
            names.append(QString::fromUtf8(row.name));
        }
    }
    return names.isEmpty() ? QStringLiteral("all") : names.join(QStringLiteral(", "));
}

Row rowOf(const char *about, const Scope &scope, const QString &rule)
{
    return {QLatin1String(about),
            textOf(scope.kinds),
            scope.market ? marketLetters(*scope.market) : QString(),
            TradingDate::ofNumber(scope.from).value(),
            TradingDate::ofNumber(scope.until).value(),
            rule,
            QString::fromUtf8(scope.source),
            scope.evidence};
}

const char *wordOf(DayState state)
{
    switch (state) {
    case DayState::Closed:
        return "closed";
    case DayState::BeforeOpen:
        return "before the open";
    case DayState::OpeningAuction:
        return "opening auction";
    case DayState::BeforeMorning:
        return "before the morning";
    case DayState::Morning:
        return "morning";
    case DayState::NoonBreak:
        return "noon break";
    case DayState::Afternoon:
        return "afternoon";
    case DayState::ClosingAuction:
        return "closing auction";
    case DayState::AfterClose:
        return "after the close";
    case DayState::AfterHours:
        return "trading at the closing price";
    }
    return "";
}

QString percentText(int thousandths)
{
    return QString::number(thousandths / 10.0);
}

QString textOf(LimitShare share)
{
    return share.down == share.up
               ? QStringLiteral("%1 %").arg(percentText(share.up))
               : QStringLiteral(u"−%1 % to +%2 %").arg(percentText(share.down), percentText(share.up));
}

const char *wordsOf(Stage until)
{
    switch (until) {
    case Stage::FirstDay:
        return ", on the first day";
    case Stage::FirstDays:
        return ", on the first five days";
    case Stage::Later:
        return "";
    }
    return "";
}

/// The row for whatever has no other one says less than those that know of no limit.
QString textOf(const LimitRow &row)
{
    const QString noLimit = row.scope.kinds.areAll() ? QStringLiteral("none known") : QStringLiteral("none");
    return (row.share == withoutLimit ? noLimit : textOf(row.share)) + QLatin1String(wordsOf(row.until));
}

QString textOf(const QuantityRow &row)
{
    return QStringLiteral("tick %1, at least %2, then by %3, at most %4")
        .arg(row.tick.text())
        .arg(row.least)
        .arg(row.step)
        .arg(row.most);
}

QString textOf(const HoursRow &row)
{
    return QStringLiteral("%1 %2–%3")
        .arg(QLatin1String(wordOf(row.part)), row.begin.colonText().left(5), row.end.colonText().left(5));
}

template <typename Table>
void append(const char *about, const Table &table, std::vector<Row> *rows)
{
    for (const auto &row : table) {
        rows->push_back(rowOf(about, row.scope, textOf(row)));
    }
}

} // namespace

std::vector<Row> rows()
{
    std::vector<Row> rows;
    append("price limit", limitRows, &rows);
    append("tick and quantity", quantityRows, &rows);
    append("hours", hoursRows, &rows);
    return rows;
}

} // namespace Trading::MarketRules
