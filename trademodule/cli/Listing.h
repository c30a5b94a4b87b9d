#pragma once

#include "trademodule/ledger/Execution.h"

#include <QCommandLineOption>
#include <QStringList>
#include <QVector>

#include <utility>

namespace TradeModule {

/// A list for people as a table in the program's language, for programs as JSON, which is the same in
/// every language.
class Listing
{
public:
    /// The columns' names are keys in JSON and translated as a table's header.
    Listing(QVector<const char *> columns, bool isJson) : m_columns(std::move(columns)), m_isJson(isJson) {}

    /// The option that asks for JSON.
    static QCommandLineOption jsonOption();

    bool isJson() const { return m_isJson; }
    /// As many cells as there are columns.
    void add(const QStringList &row) { m_rows.append(row); }
    /// A cell's English word, for a table translated.
    QString word(const char *source) const;
    QString text() const;

private:
    QString json() const;
    QString table() const;

    const QVector<const char *> m_columns;
    const bool m_isJson;
    QVector<QStringList> m_rows;
};

/// "buy" or "sell", as a word for a cell.
const char *sideWord(Side side);

} // namespace TradeModule
