#pragma once

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trading/MessageCheck.h"

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
        const QByteArray answer = TradeAnswers(&ledger(), &exchange).answer(object);
        expectAsTheTableSays(object, QJsonDocument::fromJson(answer).object());
        return QJsonDocument::fromJson(answer).object();
    }

    QJsonArray rows(const QJsonObject &object)
    {
        const QJsonObject answer = ask(object);
        EXPECT_TRUE(answer[QStringLiteral("success")].toBool())
            << answer[QStringLiteral("msg")].toString().toStdString();
        return answer[QStringLiteral("data")].toArray();
    }

private:
    static void expectAsTheTableSays(const QJsonObject &asked, const QJsonObject &answer)
    {
        using namespace Trading;
        const MessageRow *known = findMessage(MessageRole::Answer, asked[QStringLiteral("cmd")].toString());
        known = known == nullptr ? findMessage(MessageRole::Failure) : known;
        for (const KeyFinding &finding : findingsIn(*known, answer)) {
            ADD_FAILURE() << "the guides do not know such an answer: " << finding.place.toStdString();
        }
    }
};

} // namespace TradeModule
