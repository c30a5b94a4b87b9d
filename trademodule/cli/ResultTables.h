#pragma once

#include "trademodule/cli/RowStream.h"
#include "trademodule/ledger/DateRange.h"
#include "trademodule/report/ResultLine.h"
#include "trademodule/results/ResultsVisitor.h"

#include <memory>

namespace TradeModule {

/// One of the lists of results: gets what the reckoning of one security after the other tells, and writes its
/// rows while it goes.
class ResultTable : public ResultsVisitor
{
public:
    /// Before the events of a security; of none, for money that belongs to none.
    virtual void begin(const KnownSecurity & /*security*/) {}
    /// After its events.
    virtual void end(const HeldShares & /*shares*/) {}
    /// After the last security.
    virtual void finish() = 0;
};

/// What the tables have in common: how costs were reckoned, which days count, how rows are written.
struct ResultOptions
{
    CostMethod method = CostMethod::Average;
    DateRange days{};
    RowStream::Format format = RowStream::Format::Table;
};

std::unique_ptr<ResultTable> resultTable(ResultGroup group, const ResultOptions &options);

} // namespace TradeModule
