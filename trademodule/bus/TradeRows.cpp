#include "trademodule/bus/TradeRows.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/JsonRows.h"

#include <string>
#include <string_view>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

namespace {

void add(const Execution &trade, JsonRows *rows)
{
    const bool isBuy = trade.side == Side::Buy;
    const std::string date = trade.date.digits();
    const std::string time = trade.time.digits();
    const std::string price = trade.price.digits();
    const std::string quantity = std::to_string(trade.quantity);
    rows->begin();
    rows->addText(STKCODE, trade.security.code);
    rows->addText(MARKET, marketNumber(trade.security.market));
    rows->addPlainText(RTSBSFLAG, isBuy ? TradeChart::BSFlag::BUY : TradeChart::BSFlag::SELL);
    rows->addText(RTSORDERNO, trade.orderNo);
    rows->addPlainText(RTSORDERDATE, date);
    rows->addPlainText(RTSENTRUSTTIME, time);
    rows->addPlainText(RTSDATE, date);
    rows->addPlainText(RTSMATCHTIME, time);
    rows->addPlainText(RTSMATCHPRICE, price);
    rows->addPlainText(RTSMATCHQTY, quantity);
    rows->addPlainText(RTSMATCHAMT, trade.amount.digits());
    rows->addFlag(BUY, isBuy);
    rows->addPlainText(DATE, date);
    rows->addNumber(PRICE, price);
    rows->addNumber(VOL, quantity);
}

void add(const Order &order, JsonRows *rows)
{
    const std::string date = order.date.digits();
    rows->begin();
    rows->addText(STKCODE, order.security.code);
    rows->addText(STKNAME, order.securityName);
    rows->addText(MARKET, marketNumber(order.security.market));
    rows->addPlainText(RTSBSFLAG, directionCode(order.direction));
    rows->addText(RTSORDERSTATUS, order.status);
    rows->addPlainText(RTSFUNDID, "paper");
    rows->addPlainText(RTSORDERNO, std::to_string(order.number));
    rows->addPlainText(RTSORDERDATE, date);
    rows->addPlainText(RTSENTRUSTDATE, date);
    rows->addPlainText(RTSENTRUSTTIME, order.time.digits());
    rows->addPlainText(RTSENTRUSTPRICE, order.price.digits());
    rows->addPlainText(RTSENTRUSTQTY, std::to_string(order.quantity));
    rows->addPlainText(RTSMATCHQTY, std::to_string(order.matchedQuantity));
    rows->addPlainText(RTSMATCHAMT, order.matchedAmount.digits());
    rows->addPlainText(RTSCANCELQTY, std::to_string(order.cancelledQuantity));
    rows->addPlainText(RTSCANCELFLAG, "0");
}

template <typename Record>
QByteArray written(const QVector<Record> &records)
{
    JsonRows rows(records.size());
    for (const Record &record : records) {
        add(record, &rows);
    }
    return rows.toJson();
}

} // namespace

QByteArray rowsOf(const Executions &trades)
{
    return written(trades);
}

QByteArray rowsOf(const Orders &orders)
{
    return written(orders);
}

} // namespace TradeModule
