// Lists of results for tests.
#pragma once

#include "terminal/results/ResultsPart.h"

namespace Terminal {

/// A row of a list by sale: which number it has, and what it earned.
inline ResultRow saleRow(qint64 number, const QString &profit = QStringLiteral("1234.50"))
{
    return {QStringLiteral("2024-01-03"), QStringLiteral("10:00:00"),  QStringLiteral("600519"),
            QStringLiteral("SH"),         QStringLiteral(u"贵州茅台"), QStringLiteral("1700.00"),
            QString::number(number),      QStringLiteral("170000.00"), QStringLiteral("90.00"),
            QStringLiteral("85.00"),      QStringLiteral("168675.50"), profit,
            QStringLiteral("0.73")};
}

/// Rows [first, first + rows) of a list by sale of so many.
inline ResultsPart salesPart(qint64 first, qint64 rows, qint64 count,
                             const QString &state = QStringLiteral("1"))
{
    ResultsPart part{{ResultGroup::Sale}, first};
    for (qint64 number = first; number < first + rows; ++number) {
        part.rows.push_back(saleRow(number));
    }
    part.count = count;
    part.sum = ResultRow{{},
                         {},
                         {},
                         {},
                         {},
                         {},
                         {},
                         QStringLiteral("1700000.00"),
                         QStringLiteral("900.00"),
                         QStringLiteral("850.00"),
                         QStringLiteral("1686755.00"),
                         QStringLiteral("-12345.00"),
                         QStringLiteral("-0.73")};
    part.state = state;
    part.costMethod = QStringLiteral("average");
    return part;
}

} // namespace Terminal
