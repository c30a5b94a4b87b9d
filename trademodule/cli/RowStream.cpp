#include "trademodule/cli/RowStream.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Console.h"
#include "trading/CsvLine.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace TradeModule {

namespace {

constexpr int mostWaiting = 1000;

/// An object of the library for each row would take most of the time of a long list.
QString jsonText(const QString &cell)
{
    const bool isPlain = std::all_of(cell.begin(), cell.end(), [](QChar character) {
        return character >= QLatin1Char(' ') && character != QLatin1Char('"') &&
               character != QLatin1Char('\\') && !character.isSurrogate();
    });
    if (isPlain) {
        return QLatin1Char('"') + cell + QLatin1Char('"');
    }
    const QByteArray list = QJsonDocument(QJsonArray{cell}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

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
    QString line = m_isFirst ? QStringLiteral("\n{") : QStringLiteral(",\n{");
    for (int i = 0; i < m_columns.size(); ++i) {
        line += i == 0 ? QString() : QStringLiteral(",");
        line += QLatin1Char('"') + QLatin1String(m_columns[i]) + QLatin1String("\":") + jsonText(row[i]);
    }
    write(line + QLatin1Char('}'));
    m_isFirst = false;
}

} // namespace TradeModule
