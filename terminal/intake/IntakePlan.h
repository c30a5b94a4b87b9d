#pragma once

#include "terminal/options/AccountPlaces.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace Terminal {

/// What an intake works with.
struct IntakePlan
{
    QString terminalProgram; ///< which takes bars in
    QString moduleProgram;   ///< which takes statements in
    QString busAddress;      ///< of the charts to be told; empty: none
    QString busInstance;     ///< on which they are; empty: that of this program
    QString language = QStringLiteral("zh");
    AccountPlaces places; ///< into which the files go; they are made when they are not there
};

/// The words that come before each command of the trading module.
QStringList moduleWords(const IntakePlan &plan);

/// For a child that is to meet the charts that show the account.
QProcessEnvironment environmentOf(const IntakePlan &plan);

} // namespace Terminal
