#pragma once

#include "trademodule/import/StatementReader.h"
#include "trademodule/import/TextDecoding.h"
#include "trademodule/ledger/Holding.h"

#include <gmock/gmock.h>

#include <QTextCodec>

#include <string>
#include <vector>

namespace TradeModule {

/// An entry in one line: "20230214 10285200 buy SH600000 100 at 7.36 = 736.00 fee 5.02 order 7 deal 123".
inline std::string described(const Execution &execution)
{
    const char *const sides[] = {"buy", "sell", "bonus", "merger", "allotment", "in", "out"};
    QString line = QStringLiteral("%1 %2 %3 %4%5 %6 at %7 = %8 fee %9")
                       .arg(execution.date.text(), execution.time.text(),
                            QLatin1String(sides[static_cast<int>(execution.side)]),
                            marketLetters(execution.security.market), execution.security.code)
                       .arg(execution.quantity)
                       .arg(execution.price.text(), execution.amount.text(), execution.fee.text());
    if (!execution.orderNo.isEmpty()) {
        line += QStringLiteral(" order ") + execution.orderNo;
    }
    if (!execution.dealNo.isEmpty()) {
        line += QStringLiteral(" deal ") + execution.dealNo;
    }
    return line.toStdString();
}

inline std::vector<std::string> described(const Executions &executions)
{
    std::vector<std::string> lines;
    for (const Execution &execution : executions) {
        lines.push_back(described(execution));
    }
    return lines;
}

inline StatementContents readText(const char *utf8, const ReadOptions &options = {})
{
    return readStatement(QString::fromUtf8(utf8), options);
}

inline std::vector<std::string> reasons(const StatementContents &contents)
{
    std::vector<std::string> lines;
    for (const BadRow &row : contents.badRows) {
        lines.push_back(std::to_string(row.line) + ": " + row.reason.toStdString());
    }
    return lines;
}

} // namespace TradeModule
