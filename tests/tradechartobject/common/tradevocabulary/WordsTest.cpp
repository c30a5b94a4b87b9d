#include "tradechartobject/common/TradeVocabulary.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QRegularExpression>
#include <QString>

#include <string>
#include <vector>

using namespace TradeChart;
using ::testing::ElementsAreArray;

namespace {

struct Word
{
    const char *constant;
    const char *const *value;
    const char *text;
};

#define WORD(group, name, text)                                                                              \
    Word                                                                                                     \
    {                                                                                                        \
#        group "::" #        name, &group::name, text                                                        \
    }

// What travels on the bus, written out a second time: a slip of the pen in the code is not repeated here.
const Word words[] = {
    WORD(Topic, TRADENOTIFY, "TradeNotify"),
    WORD(Topic, TRADEQUERY, "TradeQuery"),
    WORD(Topic, ENTRUSTQUERY, "EntrustQuery"),
    WORD(CmdType, HISTORYTRADE, "HistoryTrade"),
    WORD(CmdType, TODAYTRADE, "TodayTrade"),
    WORD(CmdType, HOLDERCOSTPRICE, "HolderCostPrice"),
    WORD(CmdType, ENTRUSTTODAYTRADE, "EntrustTodayTrade"),
    WORD(CmdType, ENTRUSTHISTORYTRADE, "EntrustHistoryTrade"),
    WORD(CmdType, ENTRUSTCANCEL, "EntrustCancel"),
    WORD(TradeKeyFields, ALGORITHMTYPE, "type"),
    WORD(TradeKeyFields, AUTOREFRESHTIME, "auto_refresh_time"),
    WORD(TradeKeyFields, PARAM, "param"),
    WORD(TradeKeyFields, CMD, "cmd"),
    WORD(TradeKeyFields, SCREENID, "screenId"),
    WORD(TradeKeyFields, STKCODE, "stkcode"),
    WORD(TradeKeyFields, DATA, "data"),
    WORD(TradeKeyFields, MARKET, "market"),
    WORD(TradeKeyFields, OBJECTID, "objectId"),
    WORD(TradeKeyFields, START, "start"),
    WORD(TradeKeyFields, END, "end"),
    WORD(TradeKeyFields, BUY, "buy"),
    WORD(TradeKeyFields, DATE, "date"),
    WORD(TradeKeyFields, PRICE, "price"),
    WORD(TradeKeyFields, VOL, "vol"),
    WORD(TradeKeyFields, COSTPRICE, "costprice"),
    WORD(TradeKeyFields, STKNAME, "stkname"),
    WORD(TradeKeyFields, RTSBSFLAG, "bsflag2"),
    WORD(TradeKeyFields, RTSMATCHTIME, "matchtime"),
    WORD(TradeKeyFields, RTSMATCHPRICE, "matchprice"),
    WORD(TradeKeyFields, RTSMATCHQTY, "matchqty"),
    WORD(TradeKeyFields, RTSMATCHAMT, "matchamt"),
    WORD(TradeKeyFields, RTSDATE, "bizdate"),
    WORD(TradeKeyFields, RTSORDERNO, "ordersno"),
    WORD(TradeKeyFields, RTSORDERDATE, "orderdate"),
    WORD(TradeKeyFields, RTSORDERSTATUS, "orderstatus"),
    WORD(TradeKeyFields, RTSCANCELQTY, "cancelqty"),
    WORD(TradeKeyFields, RTSCANCELFLAG, "cancelflag"),
    WORD(TradeKeyFields, RTSENTRUSTPRICE, "orderprice"),
    WORD(TradeKeyFields, RTSENTRUSTQTY, "orderqty"),
    WORD(TradeKeyFields, RTSFUNDID, "fundid"),
    WORD(TradeKeyFields, RTSENTRUSTTIME, "opertime"),
    WORD(TradeKeyFields, RTSENTRUSTDATE, "operdate"),
    WORD(TradeKeyFields, ERRCODE, "errcode"),
    WORD(TradeKeyFields, SUCCESS, "success"),
    WORD(TradeKeyFields, MSG, "msg"),
    WORD(TradeKeyFields, MSGOK, "msgok "),
    WORD(BSFlag, BUY, "B"),
    WORD(BSFlag, SELL, "S"),
    WORD(OrderStatus, None, "0"),
    WORD(OrderStatus, Quoting, "1"),
    WORD(OrderStatus, Quoted, "2"),
    WORD(OrderStatus, QuotedWaittingCancel, "3"),
    WORD(OrderStatus, PartDealWaittingCancel, "4"),
    WORD(OrderStatus, PartCanceled, "5"),
    WORD(OrderStatus, Canceled, "6"),
    WORD(OrderStatus, PartDeal, "7"),
    WORD(OrderStatus, Dealed, "8"),
    WORD(OrderStatus, AbolishedOrder, "9"),
    WORD(OrderStatus, WaittingQuote, "A"),
    WORD(OrderStatus, QuotingB, "B"),
    WORD(OrderStatus, Conformed, "G"),
};

void PrintTo(const Word &word, std::ostream *out)
{
    *out << word.constant;
}

class TradeVocabularyWordsEach : public ::testing::TestWithParam<Word>
{
};

TEST_P(TradeVocabularyWordsEach, IsSpelledAsTheTradingModuleSpellsIt)
{
    EXPECT_STREQ(*GetParam().value, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Words, TradeVocabularyWordsEach, ::testing::ValuesIn(words), [](const auto &row) {
    return QString::fromLatin1(row.param.constant).remove(QStringLiteral("::")).toStdString();
});

TEST(TradeVocabularyWords, IsListedWholeInItsPage)
{
    QFile page(QStringLiteral(TRADECHART_SOURCE_DIR "/docs/vocabulary.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    std::vector<std::string> listed;
    const QRegularExpression row(QStringLiteral("^\\| `(\\w+::\\w+)` \\| \"([^\"]*)\" \\|"),
                                 QRegularExpression::MultilineOption);
    for (auto rows = row.globalMatch(QString::fromUtf8(page.readAll())); rows.hasNext();) {
        const QRegularExpressionMatch match = rows.next();
        listed.push_back((match.captured(1) + QLatin1Char('=') + match.captured(2)).toStdString());
    }
    std::vector<std::string> known;
    for (const Word &word : words) {
        known.push_back(std::string(word.constant) + '=' + *word.value);
    }
    EXPECT_THAT(listed, ElementsAreArray(known));
}

} // namespace
