#include "trademodule/cli/Listing.h"

#include "trademodule/ProgramLanguage.h"

#include <utility>

namespace TradeModule {

QCommandLineOption Listing::jsonOption()
{
    return {QStringLiteral("json"), translated("Writes JSON instead of a table.")};
}

Listing::Listing(QVector<const char *> columns, bool isJson)
    : m_isJson(isJson),
      m_stream(std::move(columns), isJson ? RowStream::Format::Json : RowStream::Format::Table)
{
}

QString Listing::word(const char *source) const
{
    return m_isJson ? QString::fromLatin1(source) : translated(source);
}

const char *sideWord(Side side)
{
    return side == Side::Buy ? QT_TR_NOOP("buy") : QT_TR_NOOP("sell");
}

} // namespace TradeModule
