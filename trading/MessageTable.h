// Every message between terminal, overlays and trading module, written once: docs/messages.md is made from
// it, and AnswerCheck.h holds answers against it.
#pragma once

#include <QString>

#include <vector>

namespace Trading {

/// What JSON has under a key. A reader takes no other type for it: a number where text belongs is not read.
enum class JsonType { Text, Number, Flag, Texts, Record, Rows };

/// What a value must hold besides its type.
enum class Form {
    Any,
    Filled,        ///< not empty
    Day,           ///< yyyymmdd, a day of the calendar
    Time,          ///< hhmmsscc, cc hundredths of a second
    QuoteTime,     ///< hhmm, hhmmss or hhmmsscc
    Price,         ///< decimal, at least 0
    Cost,          ///< decimal, or "nan" for none
    Whole,         ///< a whole number that an int holds, at least 0
    Positive,      ///< a whole number, at least 1
    TradeSide,     ///< "B" or "S"
    OrderSide,     ///< a direction code, see docs/vocabulary.md
    OrderStatus,   ///< a status code, see docs/vocabulary.md
    MarketLetters, ///< "SH" or "SZ"
    MarketNumber,  ///< "1" or "2"
    AnyMarket,     ///< letters or number
    Command,       ///< a command of this table
    ClientNumber,  ///< 1 to 64 printable ASCII characters
    Amount,        ///< decimal, which may be below 0
    ResultGroup,   ///< what a row of a list of results stands for, see ResultColumns.h
    ResultColumn,  ///< the key of one of their columns
    CostMethod,    ///< how costs are reckoned, see CostWords
    Replacement,   ///< how far a replacement is, see ReplacementWords
    Instant,       ///< ISO 8601, in UTC
    FailureKind,   ///< a number: 0 for none, up to lastFailureKind
};

/// The kinds of failures, see docs/messages.md, are numbers from 1 to this.
inline constexpr int lastFailureKind = 3;

/// What a reader does where a value is not what it must be, or a required key is missing.
enum class WhenWrong {
    Nothing,        ///< no reader minds
    Refused,        ///< a question: it is refused, and the answer names the key
    WarnedOf,       ///< a quote: it is left alone, with a warning that names the key
    ToSender,       ///< the answer goes to who sent the question
    Ignored,        ///< the message is ignored
    NoRows,         ///< counts as an answer without rows
    Failure,        ///< counts as a failure
    Success,        ///< counts as a success
    EmptyMessage,   ///< the user reads an empty message
    NoLine,         ///< there is no cost line, or one at 0
    SkippedRow,     ///< the row is left out
    Zero,           ///< counts as 0
    Sale,           ///< counts as a sale
    ListedTwice,    ///< all that it brings is listed twice
    NoBar,          ///< the trade stands on no bar
    WrongTime,      ///< the trade is listed at a wrong time
    FirstMinute,    ///< the order stands at 09:31
    NoMarker,       ///< the order gets no marker
    NoCancelling,   ///< the order cannot be cancelled
    EmptyCell,      ///< the cell of the list is empty
    DrawnAllTheSame ///< it is drawn all the same
};

struct RecordShape;

/// A key of a message or of a record in it.
struct MessageKey
{
    const char *key;
    JsonType type;
    Form form;
    bool isRequired;
    WhenWrong whenWrong;
    const char *meaning; ///< one line of English
    const RecordShape *inside =
        nullptr; ///< what a record or each row holds; null where nothing is said of it
};

using MessageKeys = std::vector<MessageKey>;

/// A record that stands in messages.
struct RecordShape
{
    const char *title;
    MessageKeys keys;
};

/// What a message is for.
enum class MessageRole {
    Question,     ///< to the trading module, on channel "Global"
    Answer,       ///< from it, on the channel that the question names
    Failure,      ///< from it there, in place of any answer: it could not do what was asked
    Notification, ///< from it to everybody: something has changed
    Presence,     ///< from it to everybody, retained
    Quote,        ///< to it, on channel "Market"
};

/// A message: by its role and, where several share one, by the value of its "cmd".
struct MessageRow
{
    MessageRole role;
    const char *topic;
    const char *command; ///< null where the role says all
    const char *meaning;
    MessageKeys keys; ///< all of them, those that every message of its role has too
};

/// Each message once, questions before their answers.
const std::vector<MessageRow> &messageTable();

/// Null when the table has no such message.
const MessageRow *findMessage(MessageRole role, const QString &command = {});

/// "a text", "yyyymmdd", "the row is left out": the words of the table, for people.
const char *wordOf(JsonType type);
const char *wordOf(Form form);
const char *wordOf(WhenWrong effect);

} // namespace Trading
