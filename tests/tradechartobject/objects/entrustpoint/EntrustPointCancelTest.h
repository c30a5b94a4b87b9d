#pragma once

#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

/// The order points with two orders at one place, of which the second may be cancelled; the user says yes.
class EntrustPointCancelTest : public EntrustPointTest
{
protected:
    void SetUp() override
    {
        createOnThreeMinutes();
        axis.onConfirm = [] { return true; };
        hearOrders({SentOrder{"0S", "8", "10", "9310000", QByteArray::number(today), "1"},
                    SentOrder{"0B", "2", "10", "9310000", QByteArray::number(today), "2"}});
    }

    /// What the object calls itself in its questions.
    QString objectId()
    {
        TradeChart::EntrustInfo order{};
        overlay->sendCancelOrderReq(order);
        const QJsonObject sent = QJsonDocument::fromJson(questions().back()).object();
        bus().sent.clear();
        return sent.value(QLatin1String("objectId")).toString();
    }

    void hearCancelled(const QJsonObject &rest) { hear(TradeChart::Topic::TRADEQUERY, cancelAnswer(rest)); }

    QJsonObject cancelAnswer(QJsonObject rest)
    {
        return with(with(rest, "cmd", QStringLiteral("EntrustCancel")), "objectId", objectId());
    }
};
