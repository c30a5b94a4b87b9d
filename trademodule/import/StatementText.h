#pragma once

#include "trademodule/import/StatementColumns.h"
#include "trademodule/import/StatementLine.h"

#include <QStringList>

#include <optional>

namespace TradeModule {

/// The lines of a statement and where its header is.
class StatementText
{
public:
    /// An Error when no line is a header.
    explicit StatementText(const QString &text);

    const QStringList &lines() const { return m_lines; }
    int headerIndex() const { return m_headerIndex; }
    const StatementColumns &columns() const { return m_columns; }
    QStringList cells(const QString &line) const;

private:
    bool takeHeader(int index, Separator separator);

    QStringList m_lines;
    int m_headerIndex = -1;
    Separator m_separator = Separator::Tab;
    StatementColumns m_columns;
    std::optional<AlignedColumns> m_aligned; ///< when blanks keep the cells apart
};

} // namespace TradeModule
