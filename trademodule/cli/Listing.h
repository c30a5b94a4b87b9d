#pragma once

#include <QCommandLineOption>
#include <QStringList>
#include <QVector>

namespace TradeModule {

/// A list for people as a table, for programs as JSON: the columns are the same.
class Listing
{
public:
    explicit Listing(QStringList columns) : m_columns(std::move(columns)) {}

    /// The option that asks for JSON.
    static QCommandLineOption jsonOption();

    /// As many cells as there are columns.
    void add(const QStringList &row) { m_rows.append(row); }
    QString text(bool isJson) const;

private:
    QString json() const;

    const QStringList m_columns;
    QVector<QStringList> m_rows;
};

/// 2024-01-02 of 20240102.
QString dashedDate(int date);
/// 09:30:15 of 09301500.
QString clockTime(int time);

} // namespace TradeModule
