#include "trademodule/import/StatementReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/EntryReader.h"
#include "trademodule/import/StatementText.h"

#include <QSet>

#include <algorithm>

namespace TradeModule {

namespace {

bool isDecoration(const QString &line)
{
    static const QString marks = QStringLiteral("-=_*+");
    return line.startsWith(QLatin1Char('#')) || std::all_of(line.begin(), line.end(), [](QChar character) {
               return marks.contains(character) || character.isSpace() || character == QLatin1Char(',');
           });
}

/// Collects what the lines of a statement say.
class Collector
{
public:
    Collector(const StatementText &text, const ReadOptions &options) : m_text(text), m_entries(options) {}

    StatementContents collect();

private:
    void take(const QString &line, int lineNumber);
    void add(const Execution &execution, const StatementRow &row, const QString &line);
    void putOldestFirst();

    const StatementText &m_text;
    const EntryReader m_entries;
    QSet<QString> m_seenLines;
    StatementContents m_contents;
};

StatementContents Collector::collect()
{
    const QStringList &lines = m_text.lines();
    const QString header = lines[m_text.headerIndex()].trimmed();
    for (int index = m_text.headerIndex() + 1; index < lines.size(); ++index) {
        const QString line = lines[index].trimmed();
        if (!isDecoration(line) && line != header) {
            take(lines[index], index + 1);
        }
    }
    putOldestFirst();
    return std::move(m_contents);
}

void Collector::take(const QString &line, int lineNumber)
{
    try {
        const StatementRow row(m_text.columns(), m_text.cells(line));
        const Entry entry = m_entries.read(row);
        if (const auto *const leftOut = std::get_if<LeftOut>(&entry)) {
            ++m_contents.leftOut[leftOut->kind];
        } else {
            add(std::get<Execution>(entry), row, line);
        }
    } catch (const Error &error) {
        m_contents.badRows.append({lineNumber, error.reason()});
    }
}

void Collector::add(const Execution &execution, const StatementRow &row, const QString &line)
{
    const int seenBefore = m_seenLines.size();
    m_seenLines.insert(line);
    if (m_seenLines.size() == seenBefore) {
        if (!execution.dealNo.isEmpty()) {
            ++m_contents.repeatedRows;
            return;
        }
        ++m_contents.equalRows;
    }
    const QString name = CellValue::cleaned(row.cell(Column::Name));
    if (!name.isEmpty()) {
        m_contents.names.insert(execution.security, name);
    }
    m_contents.bonuses += execution.side == Side::Bonus ? 1 : 0;
    m_contents.executions.append(execution);
}

/// Entries of the same second keep the order in which they happened, also in a list that starts with
/// the newest.
void Collector::putOldestFirst()
{
    Executions &executions = m_contents.executions;
    const auto isEarlier = [](const Execution &a, const Execution &b) {
        return a.date != b.date ? a.date < b.date : a.time < b.time;
    };
    if (!executions.isEmpty() && isEarlier(executions.constLast(), executions.constFirst())) {
        std::reverse(executions.begin(), executions.end());
    }
    std::stable_sort(executions.begin(), executions.end(), isEarlier);
}

void refuseMissingColumns(const StatementColumns &columns, const ReadOptions &options)
{
    if (!columns.has(Column::Date) && !options.date) {
        throw Error(translated("the statement has no date column; give the day of its trades with --date"));
    }
    if (columns.has(Column::Date) && options.date) {
        throw Error(translated("the statement has dates of its own; leave --date out"));
    }
    if (!columns.has(Column::Code) && options.securitiesByName.isEmpty()) {
        throw Error(translated("the statement has no column of codes (证券代码); give a list of the "
                               "securities' codes and names with --securities"));
    }
    if (!columns.has(Column::Side) && !columns.has(Column::Business) && !columns.has(Column::Remark)) {
        throw Error(translated("the statement has no column that tells buys from sells (买卖标志)"));
    }
}

} // namespace

StatementContents readStatement(const QString &text, const ReadOptions &options)
{
    const StatementText statement(text);
    refuseMissingColumns(statement.columns(), options);
    return Collector(statement, options).collect();
}

} // namespace TradeModule
