#pragma once

#include "trading/TradingDate.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace Terminal {

/// What a practice is to begin with.
struct PracticeWish
{
    QString name;
    QString dataFolder;
    QString code;
    Trading::TradingDate day;
    QString copiedLedger;  ///< whose cash and holdings it has; empty: those below
    double cash = 1000000; ///< yuan
    int shares = 0;        ///< of the security, that are held before the day
    double costPrice = 0;  ///< of these, yuan a share
};

/// The words and the environment with which the trading module makes the ledger. An address may have a
/// password, which the environment hides from other users.
QStringList moduleWords(const PracticeWish &wish, const QString &language);
QProcessEnvironment moduleEnvironment(const PracticeWish &wish, const QString &newLedger);

} // namespace Terminal
