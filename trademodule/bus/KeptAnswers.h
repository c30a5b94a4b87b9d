#pragma once

#include "trademodule/bus/AnswerMessage.h"
#include "trademodule/ledger/Database.h"

#include <QByteArray>
#include <QCache>
#include <QJsonObject>
#include <QString>

#include <functional>

namespace TradeModule {

/// Answers out of a ledger, kept until anything in it changes, whoever changes it: charts of one security in
/// many windows ask the same after the same notification, and the ledger is read for the first of them only.
/// At most 16 MB are kept, and those longest that were asked for last.
class KeptAnswers
{
public:
    using Content = AnswerMessage::Content;

    /// The database stays the caller's and outlives this object.
    explicit KeptAnswers(Database *database);

    /// What answers the question, read by `read` unless it is kept. Questions are the same whoever asks them.
    /// What `read` throws is passed on, and nothing is kept of it.
    Content of(const QJsonObject &question, const std::function<Content()> &read);

private:
    void forgetOld();

    Database *const m_database;
    QString m_state; ///< of the ledger that the answers are of
    QCache<QByteArray, Content> m_contents;
};

} // namespace TradeModule
