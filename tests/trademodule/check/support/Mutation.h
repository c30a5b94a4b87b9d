#pragma once

#include "tests/trademodule/check/support/StandInModule.h"

#include "trading/MessageTable.h"

#include <QJsonObject>
#include <QStringList>
#include <QVector>

#include <string>

namespace TradeModule {

/// A fault that a module may have in all its messages of a kind.
struct Mutation
{
    enum Way {
        // of a key
        Dropped,
        Retyped,
        Emptied,
        OutOfRange,
        DoubledKey,
        // of a whole message
        Silent,
        DoubledMessage,
        Late,
        NoJson,
    };

    QString kind;     ///< a command, "failure", or a topic
    QStringList path; ///< to the key, "*" for every row; empty for a whole message
    Way way;

    std::string text() const;

    /// What the table of messages says of the key; null where it does not know it, and for a whole message.
    const Trading::MessageKey *key() const;

    /// The messages, whose kinds are known, with the fault in them.
    QVector<Said> applied(const QVector<Said> &said) const;
};

/// The kind of a message.
QString kindOf(const Said &said);

/// The message without, and with, one thing that a key's mutation changes.
QByteArray mutated(const QJsonObject &message, const Mutation &mutation);

/// Every fault that can be made in these messages: each key in each way, each kind of message in each way.
QVector<Mutation> mutationsOf(const QVector<Said> &said);

} // namespace TradeModule
