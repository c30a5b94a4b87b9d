#pragma once

#include <QString>

#include <chrono>

namespace TradeModule {

/// Asks the name server for a host, so that whoever asks it next is answered at once: a database's library
/// waits for it without a limit. True when an answer came in time, whatever it says; false, `longest` later,
/// when none did.
bool nameServerAnswers(const QString &host, std::chrono::milliseconds longest);

} // namespace TradeModule
