#include "tests/fuzz/TwoWays.h"

#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/FlatMessage.h"
#include "tradechartobject/common/OrderRow.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint_p.h"
#include "tradechartobject/objects/EntrustPoint_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>
#include <vector>

using namespace TradeChart;

namespace {

constexpr std::int64_t someDay = 20240102;

/// All that can be asked of a value.
struct Asked
{
    QString text;
    bool isTrue;
    double number;
};

bool isSame(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0; // zeros have signs, and NaN is NaN
}

bool isSame(const Asked &one, const Asked &other)
{
    return one.text == other.text && one.isTrue == other.isTrue && isSame(one.number, other.number);
}

template <class Value>
Asked ask(const Value &value)
{
    return {value.toString(), value.toBool(), value.toDouble()};
}

Asked ask(const RowField &field)
{
    return {field.text().toString(), field.isTrue(), field.number()};
}

bool isSame(const trade_cj &one, const trade_cj &other)
{
    return one.isBuy == other.isBuy && one.matchTime == other.matchTime &&
           isSame(one.matchPrice, other.matchPrice) && isSame(one.matchQty, other.matchQty);
}

bool isSame(const EntrustInfo &one, const EntrustInfo &other)
{
    return one.isBuy == other.isBuy && one.orderStatus == other.orderStatus && one.fundId == other.fundId &&
           one.orderNo == other.orderNo && one.orderDate == other.orderDate &&
           one.orderTime == other.orderTime && isSame(one.orderPrice, other.orderPrice) &&
           one.orderQty == other.orderQty && one.matchQty == other.matchQty &&
           isSame(one.matchPrice, other.matchPrice) && one.cancelQty == other.cancelQty;
}

template <class List>
bool areSame(const List &one, const List &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const auto &a, const auto &b) { return isSame(a, b); });
}

template <class Map>
bool areSameMaps(const Map &one, const Map &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto &a, const auto &b) {
        return a.first == b.first && areSame(a.second, b.second);
    });
}

// Fields of the message and of each row by itself

std::string differenceOfFields(const FlatMessage &flat, const QJsonObject &tree)
{
    for (const QString &key : tree.keys()) {
        const QByteArray name = key.toLatin1();
        const QLatin1String latin(name);
        if (!flat.contains(latin) || !isSame(ask(flat.value(latin)), ask(tree.value(key)))) {
            return "the message's " + key.toStdString();
        }
    }
    for (const char *key : {TradeKeyFields::CMD, TradeKeyFields::STKCODE, TradeKeyFields::DATA}) {
        if (flat.contains(QLatin1String(key)) != tree.contains(QLatin1String(key))) {
            return std::string("whether the message has ") + key;
        }
    }
    return {};
}

std::string differenceOfRow(const FlatRow &flat, const QJsonValue &tree)
{
    if (!tree.isObject() || flat.toObject() != tree.toObject()) {
        return "the JSON of a row";
    }
    const QJsonObject row = tree.toObject();
    for (const QString &key : row.keys()) {
        FlatPlace place(key.toLatin1().constData());
        flat.read(place);
        if (!isSame(ask(place.value), ask(row.value(key)))) {
            return "a row's " + key.toStdString();
        }
    }
    return {};
}

// All rows in turn, as overlays read them

using ManyAsked = std::array<Asked, 6>;

template <std::size_t index>
void takeAll(ManyAsked &record, const RowField &field)
{
    record[index] = ask(field);
}

const RowColumn<ManyAsked> manyColumns[] = {
    {TradeKeyFields::RTSBSFLAG, takeAll<0>}, {TradeKeyFields::MSGOK, takeAll<1>},
    {TradeKeyFields::BUY, takeAll<2>},       {TradeKeyFields::PRICE, takeAll<3>},
    {TradeKeyFields::VOL, takeAll<4>},       {TradeKeyFields::RTSMATCHPRICE, takeAll<5>},
};

std::vector<ManyAsked> readAll(const AnswerRows &rows)
{
    std::vector<ManyAsked> all;
    rows.read(manyColumns, [&all](const ManyAsked &record, const auto &) { all.push_back(record); });
    return all;
}

bool areSame(const std::vector<ManyAsked> &one, const std::vector<ManyAsked> &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const ManyAsked &a, const ManyAsked &b) { return areSame<ManyAsked>(a, b); });
}

TradesByDay pastTradesOf(const AnswerRows &rows)
{
    TradesByDay trades;
    addPastTrades(rows, trades);
    return trades;
}

std::string differenceOfRows(const AnswerRows &flat, const AnswerRows &tree)
{
    if (flat.size() != tree.size()) {
        return "the number of rows";
    }
    if (!areSame(readAll(flat), readAll(tree))) {
        return "what columns take";
    }
    const TodaysTrades flatToday = readTodaysTrades(flat);
    const TodaysTrades treeToday = readTodaysTrades(tree);
    if (flatToday.day != treeToday.day || !areSame(flatToday.trades, treeToday.trades)) {
        return "the trades of today";
    }
    if (!areSameMaps(pastTradesOf(flat), pastTradesOf(tree))) {
        return "the trades of the past";
    }
    const QString market = QStringLiteral("SH");
    return areSameMaps(readOrders(flat, market, someDay), readOrders(tree, market, someDay)) ? ""
                                                                                             : "the orders";
}

} // namespace

std::string differenceOfWays(const QByteArray &text)
{
    const auto flat = FlatMessage::read(text);
    if (!flat) {
        return {};
    }
    const QJsonObject tree = QJsonDocument::fromJson(text).object();
    if (tree.isEmpty()) {
        return "Qt reads no message";
    }
    if (const std::string difference = differenceOfFields(*flat, tree); !difference.empty()) {
        return difference;
    }
    const QJsonArray rows = tree.value(QLatin1String(TradeKeyFields::DATA)).toArray();
    for (int i = 0; i < std::min(rows.size(), flat->rows().size()); ++i) {
        if (const std::string difference = differenceOfRow(flat->rows().at(i), rows.at(i));
            !difference.empty()) {
            return difference;
        }
    }
    return differenceOfRows(AnswerRows(flat->rows()), AnswerRows(rows));
}

bool isReadInPlace(const QByteArray &text)
{
    return FlatMessage::read(text).has_value();
}
