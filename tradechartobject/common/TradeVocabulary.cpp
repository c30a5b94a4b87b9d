#include "tradechartobject/common/TradeVocabulary.h"

#include "tradechartobject/common/ExactDecimal.h"
#include "tradechartobject/common/OrderStatusTable.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iterator>
#include <optional>
#include <sstream>

namespace TradeChart {

// NOLINTBEGIN(readability-identifier-naming): these names are exported
namespace Topic {
constexpr const char *TRADENOTIFY = "TradeNotify";
constexpr const char *TRADEQUERY = "TradeQuery";
constexpr const char *ENTRUSTQUERY = "EntrustQuery";
} // namespace Topic

namespace CmdType {
constexpr const char *HISTORYTRADE = "HistoryTrade";
constexpr const char *TODAYTRADE = "TodayTrade";
constexpr const char *HOLDERCOSTPRICE = "HolderCostPrice";
constexpr const char *ENTRUSTTODAYTRADE = "EntrustTodayTrade";
constexpr const char *ENTRUSTHISTORYTRADE = "EntrustHistoryTrade";
constexpr const char *ENTRUSTCANCEL = "EntrustCancel";
} // namespace CmdType

namespace TradeKeyFields {
constexpr const char *ALGORITHMTYPE = "type";
constexpr const char *AUTOREFRESHTIME = "auto_refresh_time";
constexpr const char *PARAM = "param";
constexpr const char *CMD = "cmd";
constexpr const char *SCREENID = "screenId";
constexpr const char *STKCODE = "stkcode";
constexpr const char *DATA = "data";
constexpr const char *MARKET = "market";
constexpr const char *OBJECTID = "objectId";
constexpr const char *START = "start";
constexpr const char *END = "end";
constexpr const char *BUY = "buy";
constexpr const char *DATE = "date";
constexpr const char *PRICE = "price";
constexpr const char *VOL = "vol";
constexpr const char *COSTPRICE = "costprice";
constexpr const char *STKNAME = "stkname";
constexpr const char *RTSBSFLAG = "bsflag2";
constexpr const char *RTSMATCHTIME = "matchtime";
constexpr const char *RTSMATCHPRICE = "matchprice";
constexpr const char *RTSMATCHQTY = "matchqty";
constexpr const char *RTSMATCHAMT = "matchamt";
constexpr const char *RTSDATE = "bizdate";
constexpr const char *RTSORDERNO = "ordersno";
constexpr const char *RTSORDERDATE = "orderdate";
constexpr const char *RTSORDERSTATUS = "orderstatus";
constexpr const char *RTSCANCELQTY = "cancelqty";
constexpr const char *RTSCANCELFLAG = "cancelflag";
constexpr const char *RTSENTRUSTPRICE = "orderprice";
constexpr const char *RTSENTRUSTQTY = "orderqty";
constexpr const char *RTSFUNDID = "fundid";
constexpr const char *RTSENTRUSTTIME = "opertime";
constexpr const char *RTSENTRUSTDATE = "operdate";
constexpr const char *ERRCODE = "errcode";
constexpr const char *SUCCESS = "success";
constexpr const char *MSG = "msg";
constexpr const char *MSGOK = "msgok ";
} // namespace TradeKeyFields

namespace BSFlag {
constexpr const char *BUY = "B";
constexpr const char *SELL = "S";
} // namespace BSFlag

namespace OrderStatus {
constexpr const char *None = "0";
constexpr const char *Quoting = "1";
constexpr const char *Quoted = "2";
constexpr const char *QuotedWaittingCancel = "3";
constexpr const char *PartDealWaittingCancel = "4";
constexpr const char *PartCanceled = "5";
constexpr const char *Canceled = "6";
constexpr const char *PartDeal = "7";
constexpr const char *Dealed = "8";
constexpr const char *AbolishedOrder = "9";
constexpr const char *WaittingQuote = "A";
constexpr const char *QuotingB = "B";
constexpr const char *Conformed = "G";
// NOLINTEND(readability-identifier-naming)

const char *getOrderStatusTxt(QString code)
{
    const OrderStatusRow *const row = OrderStatusTable::findInAnyCase(code);
    return row == nullptr ? nullptr : row->text;
}

} // namespace OrderStatus

namespace {

struct MarketCode
{
    short number;
    const char *code;
};

constexpr MarketCode marketCodes[] = {
    {0, "SZ"}, {1, "SH"}, {2, "HK"},  {3, "SF"},  {4, "SC"},  {5, "DC"},   {6, "ZC"},
    {7, "BH"}, {8, "SJ"}, {9, "LDJ"}, {10, "TJ"}, {11, "WH"}, {24, "OIL"},
};

constexpr const char *buyCodes[] = {"0B", "0b", "0c", "0d", "0e", "0a", "0q", "0w", "0y", "0.", "0l"};
constexpr const char *sellCodes[] = {"0S", "0g", "0h", "0i", "0j", "0r", "0v",
                                     "0x", "0z", "0`", "0m", "0o", "0f"};

/// Each of the codes is of two letters.
template <std::size_t codeCount>
bool contains(const char *const (&codes)[codeCount], const QString &code)
{
    return code.size() == 2 &&
           std::any_of(std::begin(codes), std::end(codes), [one = code[0], two = code[1]](const char *known) {
               return one == QLatin1Char(known[0]) && two == QLatin1Char(known[1]);
           });
}

} // namespace

QString getMarketId(short market)
{
    const auto row = std::find_if(std::begin(marketCodes), std::end(marketCodes),
                                  [market](const MarketCode &entry) { return entry.number == market; });
    return row == std::end(marketCodes) ? QString() : QLatin1String(row->code);
}

std::int64_t currentDate()
{
    const QDate today = QDate::currentDate();
    return today.year() * 10000 + today.month() * 100 + today.day();
}

namespace {

constexpr unsigned int mostDecimals = 1100; // no double has more
constexpr double firstWithoutHalves = 4503599627370496.0;

/// What printing and reading back gives, where a product surely comes to the same whole number: when it
/// is nearer to it than half-way. The error of the product is smaller than any step towards the middle.
std::optional<double> roundByProduct(double value, unsigned int digits)
{
    if (digits > mostExactDigits) {
        return std::nullopt;
    }
    const double product = value * powersOfTen[digits];
    const double whole = std::rint(product);
    const bool isSure = std::abs(product) < firstWithoutHalves && std::abs(product - whole) < 0.5;
    return isSure ? std::make_optional(exactDecimal(whole, static_cast<int>(digits))) : std::nullopt;
}

double roundByText(double value, unsigned int digits)
{
    std::stringstream text;
    text << std::fixed << std::setprecision(static_cast<int>(std::min(digits, mostDecimals))) << value;
    double rounded = 0.0;
    text >> rounded;
    return rounded;
}

} // namespace

template <typename T>
T round(T value, unsigned int digits)
{
    if (const auto rounded = roundByProduct(value, digits)) {
        return *rounded;
    }
    return std::isfinite(value) ? roundByText(value, digits) : value;
}

template double round<double>(double value, unsigned int digits);

QString toBsFlag(QString bsflag2)
{
    if (contains(buyCodes, bsflag2)) {
        return QLatin1String(BSFlag::BUY);
    }
    if (contains(sellCodes, bsflag2)) {
        return QLatin1String(BSFlag::SELL);
    }
    return {};
}

} // namespace TradeChart
