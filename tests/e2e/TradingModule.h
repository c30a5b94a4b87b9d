#pragma once

#include "tests/e2e/PluginOnBus.h"

#include <QProcess>
#include <QTemporaryDir>

/// A chart with overlays on a bus that the trading module serves, on a ledger of the test's own.
class TradingModule : public PluginOnBus
{
protected:
    ~TradingModule() override;

    /// Imports rows of a statement: 成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,
    /// 成交金额,成交编号,委托编号. Charts are told when the module serves.
    void import(const QByteArray &rows);

    /// Runs another command of the module on the ledger to its end.
    void command(const QStringList &words);

    /// Lets the module answer from now on.
    void serve();

    /// Lets the host redraw until the condition holds; the overlay asks again every second.
    bool redrawUntil(Korvane::IChartObject &overlay, const std::function<bool()> &condition);

    /// Three days, each closing at 10.
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102), makeDayBar(20240103),
                                                  makeDayBar(20240104)};

private:
    QStringList onLedger() const;

    QTemporaryDir m_folder;
    QProcess m_module;
};
