#pragma once

#include "trademodule/cli/RowStream.h"
#include "trademodule/ledger/Execution.h"

#include <QCommandLineOption>
#include <QStringList>
#include <QVector>

namespace TradeModule {

/// A list of any length on standard output: for people as a table in the program's language, for programs as
/// JSON, which is the same in every language.
class Listing
{
public:
    /// The columns' names are keys in JSON and translated as a table's header.
    Listing(QVector<const char *> columns, bool isJson);

    /// The option that asks for JSON.
    static QCommandLineOption jsonOption();

    bool isJson() const { return m_isJson; }
    /// As many cells as there are columns.
    void add(const QStringList &row) { m_stream.add(row); }
    /// A cell's English word, for a table translated.
    QString word(const char *source) const;
    /// To be called once, after the last row.
    void finish() { m_stream.finish(); }

private:
    const bool m_isJson;
    RowStream m_stream;
};

/// "buy" or "sell", as a word for a cell.
const char *sideWord(Side side);

} // namespace TradeModule
