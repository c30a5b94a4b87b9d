#pragma once

#include "terminal/data/Bar.h"
#include "tests/support/BusThread.h"

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A data folder with long histories, and a trading module on the bus that answers at once for an account
/// that has traded for all that time and has many orders today.
class BusyAccount
{
public:
    static constexpr int barCount = 100'000;  ///< of the chart of days; a file has fewer
    static constexpr int tradeCount = 50'000; ///< one on every second bar
    static constexpr int orderCount = 10'000;

    BusyAccount();

    /// Of one of two securities that have bars of days; the first has today's minutes, too.
    static QString code(int number);
    QString folder() const { return m_folder.path(); }

    /// All bars of the first security, up to yesterday.
    static Terminal::Bars allDays();

    /// Has the account answered on this bus.
    void answerOn(const QString &bus);

private:
    void writeDays(int number) const;
    void writeMinutes() const;

    QTemporaryDir m_folder;
    std::unique_ptr<BusThread> m_module;
};
