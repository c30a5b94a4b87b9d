#include "trademodule/import/StatementText.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

namespace TradeModule {

StatementText::StatementText(const QString &text) : m_lines(text.split(QLatin1Char('\n')))
{
    for (int index = 0; index < m_lines.size(); ++index) {
        for (const Separator separator : {Separator::Tab, Separator::Comma, Separator::Blanks}) {
            if (takeHeader(index, separator)) {
                return;
            }
        }
    }
    throw Error(translated("there is no header line that names the price (成交价格), the quantity (成交数量) "
                           "and the security (证券代码); export the executed trades with their header"));
}

bool StatementText::takeHeader(int index, Separator separator)
{
    const QString line = m_lines[index];
    const StatementColumns columns(splitLine(line.trimmed(), separator));
    if (!columns.isHeader()) {
        return false;
    }
    m_headerIndex = index;
    m_separator = separator;
    m_columns = StatementColumns(splitLine(line, separator));
    if (separator == Separator::Blanks) {
        m_aligned.emplace(line);
    }
    return true;
}

QStringList StatementText::cells(const QString &line) const
{
    return m_aligned ? m_aligned->cells(line) : splitLine(line, m_separator);
}

} // namespace TradeModule
