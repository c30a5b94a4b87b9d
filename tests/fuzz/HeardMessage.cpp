#include "tests/fuzz/HeardMessage.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace TradeChart;
using namespace TradeChart::TradeKeyFields;

namespace {

const char *const codes[] = {"600536", "600536", "600536", "600536", "600536", "000001", "60053x", ""};
const char *const sides[] = {"B", "S", "0B", "0S", "0B", "0S", "1", ""};
const char *const statuses[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "A", "B", "C", "", "zz"};
const char *const days[] = {"20240102", "20240102", "20240103", "20240101", "20231229",
                            "0",        "-1",       "99999999", "x"};
const char *const times[] = {"9301500", "93000", "10000000", "11310100",   "13009999", "15000100",
                             "0",       "-5",    "99999999", "2147483648", ""};
const char *const numbers[] = {"10.05", "10",  "9.5",    "11",  "0", "-3", "1e300",
                               "nan",   "inf", "0.0005", "100", "x", ""};
const char *const markets[] = {"1", "1", "1", "1", "1", "2", "65537", "SH", "0", ""};

struct Key
{
    const char *name;
    const char *const *values;
    int count;
};

template <std::size_t count>
constexpr Key key(const char *name, const char *const (&values)[count])
{
    return {name, values, static_cast<int>(count)};
}

/// A value of another type than trading modules send.
QJsonValue oddValue(FuzzInput *input)
{
    switch (input->below(6)) {
    case 0:
        return QJsonValue();
    case 1:
        return input->flag();
    case 2:
        return QJsonArray{1, QStringLiteral("x")};
    case 3:
        return QJsonObject{{QStringLiteral("a"), 1}};
    case 4:
        return input->real();
    default:
        return QString::fromUtf8(input->text(20));
    }
}

QJsonObject row(FuzzInput *input)
{
    const Key keys[] = {
        key(STKCODE, codes),
        key(RTSBSFLAG, sides),
        key(MARKET, markets),
        key(RTSORDERSTATUS, statuses),
        key(RTSDATE, days),
        key(RTSORDERDATE, days),
        key(RTSENTRUSTDATE, days),
        key(RTSMATCHTIME, times),
        key(RTSENTRUSTTIME, times),
        key(RTSMATCHPRICE, numbers),
        key(RTSENTRUSTPRICE, numbers),
        key(RTSMATCHQTY, numbers),
        key(RTSENTRUSTQTY, numbers),
        key(RTSMATCHAMT, numbers),
        key(RTSCANCELQTY, numbers),
        key(RTSORDERNO, numbers),
        key(COSTPRICE, numbers),
        key(MSGOK, numbers),
    };
    QJsonObject made;
    const int choices = input->below(256);
    for (const Key &one : keys) {
        // most rows have most keys
        if (choices < 16 && input->flag()) {
            continue;
        }
        made.insert(QLatin1String(one.name), QLatin1String(one.values[input->below(one.count)]));
    }
    made.insert(QLatin1String(BUY), input->flag());
    made.insert(QLatin1String(PRICE), input->real());
    made.insert(QLatin1String(VOL), input->real());
    if (choices > 240) {
        const Key &odd = keys[input->below(18)];
        made.insert(QLatin1String(odd.name), oddValue(input));
    }
    return made;
}

QJsonValue data(FuzzInput *input)
{
    const int choice = input->below(16);
    if (choice == 0) {
        return oddValue(input);
    }
    if (choice < 5) {
        return row(input); // a record, as of a holding
    }
    QJsonArray rows;
    for (int count = input->below(6); count > 0; --count) {
        rows.append(input->below(32) == 1 ? oddValue(input) : QJsonValue(row(input)));
    }
    return rows;
}

QJsonObject message(FuzzInput *input, const QByteArray &objectId)
{
    const char *const commands[] = {CmdType::HOLDERCOSTPRICE,
                                    CmdType::TODAYTRADE,
                                    CmdType::HISTORYTRADE,
                                    CmdType::ENTRUSTTODAYTRADE,
                                    CmdType::ENTRUSTHISTORYTRADE,
                                    CmdType::ENTRUSTCANCEL,
                                    "Other"};
    QJsonObject made{{QLatin1String(CMD), QLatin1String(input->oneOf(commands))},
                     {QLatin1String(STKCODE), QLatin1String(input->oneOf(codes))},
                     {QLatin1String(DATA), data(input)},
                     {QLatin1String(COSTPRICE), QLatin1String(input->oneOf(numbers))},
                     {QLatin1String(SUCCESS), input->flag()},
                     {QLatin1String(MSG), QString::fromUtf8(input->text(8))}};
    if (input->flag()) {
        made.insert(QLatin1String(OBJECTID), QString::fromUtf8(objectId));
    }
    return made;
}

} // namespace

HeardMessage heardMessage(FuzzInput *input, const QByteArray &objectId)
{
    const char *const topics[] = {Topic::TRADEQUERY,  Topic::TRADEQUERY,   Topic::TRADEQUERY,
                                  Topic::TRADENOTIFY, Topic::ENTRUSTQUERY, ""};
    const QByteArray topic = input->oneOf(topics);
    if (input->below(16) == 1) {
        return {topic, input->text(200)};
    }
    const auto format = input->flag() ? QJsonDocument::Compact : QJsonDocument::Indented;
    return {topic, QJsonDocument(message(input, objectId)).toJson(format)};
}
