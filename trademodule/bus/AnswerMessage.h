#pragma once

#include "trading/ModuleVocabulary.h"

#include <QByteArray>
#include <QJsonObject>

namespace TradeModule {

class TradeRequest;

/// An answer on its way to the asker: the envelope that every answer has, and its "data".
class AnswerMessage
{
public:
    /// Values of "errcode".
    enum ErrorCode {
        NoError = 0,
        NotUnderstood = 1,
        LedgerFailed = Trading::ErrorCode::LEDGERFAILED,
        Refused = 3
    };

    /// The value of "costprice" where there is no cost.
    static const QLatin1String noCost;

    /// What an answer says, whoever asked.
    struct Content
    {
        QJsonObject fields{};
        QByteArray rows{}; ///< "data" as JSON text; empty when it is among the fields
    };

    /// One without the envelope, for its content.
    AnswerMessage() = default;
    /// A success without "data": what the question named comes back, the market as its number.
    explicit AnswerMessage(const TradeRequest &request);

    void set(const char *key, const QJsonValue &value);
    void set(const Content &content);
    Content content() const { return {m_envelope, m_rows}; }
    /// "data" as JSON text; writing many rows is faster than building objects.
    void setRows(const QByteArray &json) { m_rows = json; }

    /// Makes it a failure, without "data". One to a question for the cost says that there is none: charts
    /// draw the cost of every answer, and what is missing as 0.00.
    void fail(ErrorCode code, const QString &reason);

    bool isFailure() const;
    /// The reason of a failure; empty for a success.
    QString reason() const;

    QByteArray toJson() const;

private:
    QJsonObject m_envelope;
    QByteArray m_rows;
};

} // namespace TradeModule
