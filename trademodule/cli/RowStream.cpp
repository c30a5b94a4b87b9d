#include "trademodule/cli/RowStream.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Console.h"
#include "trading/CsvLine.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

constexpr int mostWaiting = 1000;

} // namespace

RowStream::RowStream(QVector<const char *> columns, Format format)
    : m_columns(std::move(columns)),
      m_format(format)
{
    QStringList header;
    const bool isTable = format == Format::Table;
    for (const char *const column : m_columns) {
        header.append(isTable ? translated(column) : QString::fromLatin1(column));
    }
    switch (format) {
    case Format::Table:
        m_waiting.append(header);
        return;
    case Format::Json:
        write(QStringLiteral("["));
        return;
    case Format::Csv:
        write(Trading::csvLine(header));
        return;
    }
}

void RowStream::add(const QStringList &row)
{
    switch (m_format) {
    case Format::Table:
        addToTable(row);
        return;
    case Format::Json:
        writeJson(row);
        return;
    case Format::Csv:
        write(Trading::csvLine(row));
        return;
    }
}

void RowStream::addToTable(const QStringList &row)
{
    if (m_format != Format::Table) {
        return;
    }
    m_waiting.append(row);
    if (m_waiting.size() > mostWaiting) {
        writeTable();
    }
}

void RowStream::finish()
{
    switch (m_format) {
    case Format::Table:
        writeTable();
        break;
    case Format::Json:
        write(m_isFirst ? QStringLiteral("]\n") : QStringLiteral("\n]\n"));
        break;
    case Format::Csv:
        break;
    }
    print(m_text);
}

void RowStream::write(const QString &text)
{
    constexpr int mostKept = 1 << 16;
    m_text += text;
    if (m_text.size() > mostKept) {
        print(m_text);
        m_text.clear();
    }
}

void RowStream::writeTable()
{
    if (m_widths.isEmpty()) {
        m_widths = columnWidths(m_waiting);
    }
    QString text;
    for (const QStringList &row : qAsConst(m_waiting)) {
        text += alignedLine(row, m_widths);
    }
    m_waiting.clear();
    write(text);
}

void RowStream::writeJson(const QStringList &row)
{
    QJsonObject object;
    for (int i = 0; i < m_columns.size(); ++i) {
        object[QLatin1String(m_columns[i])] = row[i];
    }
    write((m_isFirst ? QStringLiteral("\n") : QStringLiteral(",\n")) +
          QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    m_isFirst = false;
}

} // namespace TradeModule
