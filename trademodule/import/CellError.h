#pragma once

#include "trademodule/Error.h"

#include <utility>

namespace TradeModule {

/// What a cell of a statement's row holds makes no sense.
class CellError : public Error
{
public:
    CellError(const QString &reason, QString column) : Error(reason), m_column(std::move(column)) {}

    /// The cell's column, by its name in the header.
    const QString &column() const { return m_column; }

private:
    QString m_column;
};

/// A buy that seems to have received what a buy pays: true of every buy where amounts have no signs.
class UnsignedBuy : public CellError
{
public:
    using CellError::CellError;
};

} // namespace TradeModule
