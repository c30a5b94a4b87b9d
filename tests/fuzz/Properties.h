// What must hold whatever comes. Each function takes any bytes, makes of them what a host, a trading module,
// a broker, an exchange or a user might do, and throws Broken when a promise of ours was not kept. Each
// leaves nothing behind that the next call could see. Requires a QCoreApplication.
#pragma once

#include <QByteArray>

#include <stdexcept>
#include <string>

/// A promise that was not kept.
class Broken : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

inline void demand(bool holds, const std::string &promise)
{
    if (!holds) {
        throw Broken(promise);
    }
}

/// What an overlay reads in place of a message is what Qt reads.
void checkAnswers(const QByteArray &bytes);

/// A host calls overlays with odd values, lets messages in and ends them wherever it may: nothing is called
/// of an overlay that is gone, and nothing grows without a bound.
void checkOverlays(const QByteArray &bytes);

/// After every answer, in whatever order they come, an overlay shows the orders and trades that a naive
/// account of what came has.
void checkBooks(const QByteArray &bytes);

/// Orders against quotes: money and shares add up, no order gets more than it asked for or a worse price.
void checkExchange(const QByteArray &bytes);

/// What is read of a statement is booked as a whole, once, and taken back as a whole; else the file is named.
void checkStatements(const QByteArray &bytes);

/// Bars, corporate actions and lists of securities: what is read makes sense and is read again as it is
/// written.
void checkBars(const QByteArray &bytes);

/// Settings of the bus, topics, addresses of ledgers, profiles and calendars.
void checkSettings(const QByteArray &bytes);

/// A client of the bus against a broker that does as it likes.
void checkClient(const QByteArray &bytes);
