#pragma once

#include <QStringList>
#include <QVector>

namespace TradeModule {

/// Writes a list of any length to standard output while it comes: for people as a table in the program's
/// language, for programs as JSON or CSV, which are the same in every language.
///
///     RowStream rows({QT_TR_NOOP("code"), QT_TR_NOOP("profit")}, RowStream::Format::Csv);
///     rows.add({"600519", "193.00"});
///     rows.finish();
class RowStream
{
public:
    enum class Format {
        Table, ///< as wide as its first thousand rows need
        Json,  ///< an array of objects, one a line
        Csv,
    };

    /// The columns' names are keys in JSON and CSV, and translated in a table.
    RowStream(QVector<const char *> columns, Format format);

    /// As many cells as there are columns.
    void add(const QStringList &row);
    /// A row for people only, such as a sum.
    void addToTable(const QStringList &row);
    /// To be called once, after the last row.
    void finish();

private:
    void write(const QString &text);
    void writeTable();
    void writeJson(const QStringList &row);

    const QVector<const char *> m_columns;
    const Format m_format;
    QVector<QStringList> m_waiting; ///< a table's rows that are not written yet
    QVector<int> m_widths;          ///< empty before a table is begun
    QString m_text;                 ///< on its way out: to write each row by itself takes longer
    bool m_isFirst = true;
};

} // namespace TradeModule
