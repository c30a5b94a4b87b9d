// Holds an answer of the trading module against the table of messages.
#pragma once

#include "trading/MessageTable.h"
#include "trading/SecurityId.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Trading {

/// The chart that an answer came for.
struct AnsweredChart
{
    QString screenId; ///< the channel of its answers
    SecurityId security;
};

/// What is wrong with an answer, by one key.
struct AnswerFinding
{
    enum Kind {
        NotJson,     ///< no JSON object; `value` is what the parser says
        Refused,     ///< the trading module could not do it; `value` is its reason
        Missing,     ///< a key that must be there is not
        WrongType,   ///< another JSON type than the table says
        NotAllowed,  ///< a value that the table does not allow
        OtherScreen, ///< it names another screen than the one whose channel it came on
        OtherMarket, ///< a row names another market, and is drawn all the same
        Unknown,     ///< no command of an answer

        // which only who listens to a screen can see
        OtherChannel, ///< it came on the channel `value` instead of the screen's
        Repeated,     ///< the same answer to the same question for the second time
    };
    Kind kind;
    QString key;   ///< empty where the fault is in no key
    QString value; ///< what stands there, a text between quotes; of the first such row
    WhenWrong effect = WhenWrong::Ignored;
    int rows = 0;                   ///< how many rows have it; 0 where it is in no row
    JsonType type = JsonType::Text; ///< that it must be
    Form form = Form::Any;          ///< that it must have

    friend bool operator==(const AnswerFinding &a, const AnswerFinding &b)
    {
        return a.kind == b.kind && a.key == b.key && a.value == b.value && a.effect == b.effect &&
               a.rows == b.rows && a.type == b.type && a.form == b.form;
    }
};

/// What an answer holds for a chart.
struct CheckedAnswer
{
    QString command;         ///< empty when it names none
    bool isForChart = false; ///< it names the chart's security, or none
    bool isRefusal = false;
    bool isDrawable = false; ///< overlays ask for a repaint when they take it
    int rows = 0;            ///< that overlays draw or list: trades, orders, or one cost
    int otherMarkets = 0;    ///< rows that overlays leave out because they are of another market
    QString costMethod{};    ///< how the cost is reckoned, one of CostWords; empty where it is not said
    QVector<AnswerFinding> findings{}; ///< what the user should know; empty for one as it must be
};

/// Checks an answer on the channel of a chart's screen. Parses it once; each fault is told once, with the
/// number of its rows. An answer about another security is not looked into: the chart has moved on.
CheckedAnswer checkAnswer(const QByteArray &payload, const AnsweredChart &chart);

} // namespace Trading
