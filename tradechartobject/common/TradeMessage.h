#pragma once

#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/FlatMessage.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <initializer_list>
#include <optional>
#include <variant>

namespace TradeChart {

/// A message of the trading module, read once: in place when it is a FlatMessage, else through Qt's tree,
/// which is the measure of what is said. Values that are missing or of another type read as empty or false.
class TradeMessage
{
public:
    /// False when a message is for certain of none of these commands, told without reading it: their words
    /// are not in it. All overlays of a chart hear the 50,000 rows that one of them has asked for.
    static bool mayBeCommand(const QByteArray &payload, std::initializer_list<const char *> commands);

    /// None when the payload is no JSON object. An empty one says nothing and counts as none, too.
    static std::optional<TradeMessage> parse(const QByteArray &payload);

    /// The same for the answer to a blocking question of one's own, where an empty object counts.
    static std::optional<TradeMessage> parseReply(const QByteArray &payload);

    /// True when the message's "cmd" is `command`, letter case included.
    bool isCommand(const char *command) const;

    /// True when the message's "stkcode" names the security; letter case does not matter.
    bool isAbout(const Korvane::tagCodeWithName &security) const;

    /// The text under a key.
    QString text(const char *key) const;

    /// The truth under a key.
    bool isTrue(const char *key) const;

    /// The message's "data" as rows.
    AnswerRows rows() const;

    /// The message's "data" as one record. It is a message by itself: it may name a security of its own.
    TradeMessage record() const;

    /// True when there is something under a key, of whatever type.
    bool has(const char *key) const;

private:
    using Fields = std::variant<QJsonObject, FlatMessage>;

    explicit TradeMessage(Fields fields);

    Fields m_fields;
};

} // namespace TradeChart
