#pragma once

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/bus/TradeAnswers.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace TradeModule {

inline QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

inline QJsonObject question(const char *command, const SecurityId &security)
{
    return {{QStringLiteral("cmd"), QLatin1String(command)},
            {QStringLiteral("stkcode"), security.code},
            {QStringLiteral("market"), marketLetters(security.market)},
            {QStringLiteral("screenId"), QStringLiteral("screen1")}};
}

/// Asks of the answers of a ledger, without a bus.
class TradeAnswersTest : public LedgerFixture
{
protected:
    QJsonObject ask(const QJsonObject &object)
    {
        PaperExchange exchange(&ledger());
        return QJsonDocument::fromJson(TradeAnswers(&ledger(), &exchange).answer(object)).object();
    }

    QJsonArray rows(const QJsonObject &object)
    {
        const QJsonObject answer = ask(object);
        EXPECT_TRUE(answer[QStringLiteral("success")].toBool())
            << answer[QStringLiteral("msg")].toString().toStdString();
        return answer[QStringLiteral("data")].toArray();
    }
};

} // namespace TradeModule
