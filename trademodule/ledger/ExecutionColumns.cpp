#include "trademodule/ledger/ExecutionColumns.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ColumnValue.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace TradeModule::ExecutionColumns {

namespace {

struct SideLetter
{
    Side side;
    QLatin1String letter;
};

constexpr SideLetter sideLetters[] = {
    {Side::Buy, QLatin1String("B", 1)},       {Side::Sell, QLatin1String("S", 1)},
    {Side::Bonus, QLatin1String("G", 1)},     {Side::Merger, QLatin1String("M", 1)},
    {Side::Allotment, QLatin1String("A", 1)}, {Side::In, QLatin1String("I", 1)},
    {Side::Out, QLatin1String("O", 1)},
};

QString letterOf(Side side)
{
    return std::find_if(std::begin(sideLetters), std::end(sideLetters),
                        [side](const SideLetter &row) { return row.side == side; })
        ->letter;
}

Side sideOf(const QString &letter)
{
    const auto *const found = std::find_if(std::begin(sideLetters), std::end(sideLetters),
                                           [&](const SideLetter &row) { return letter == row.letter; });
    if (found == std::end(sideLetters)) {
        throw LedgerError(translated("the ledger holds a trade of the unknown side \"%1\"").arg(letter));
    }
    return found->side;
}

/// The database takes a null text for no text at all.
QString notNull(const QString &text)
{
    return QLatin1String("") + text;
}

struct Column
{
    const char *name;
    void (*read)(Execution *execution, const QVariant &value);
    QVariant (*write)(const Execution &execution);
};

/// Each column's place, name and meaning.
const Column columns[] = {
    {"side", [](Execution *execution, const QVariant &value) { execution->side = sideOf(value.toString()); },
     [](const Execution &execution) -> QVariant { return letterOf(execution.side); }},
    {"trade_date",
     [](Execution *execution, const QVariant &value) { execution->date = ColumnValue::date(value); },
     [](const Execution &execution) -> QVariant { return execution.date.number(); }},
    {"trade_time",
     [](Execution *execution, const QVariant &value) { execution->time = ColumnValue::time(value); },
     [](const Execution &execution) -> QVariant { return execution.time.number(); }},
    {"price",
     [](Execution *execution, const QVariant &value) { execution->price = ColumnValue::money(value); },
     [](const Execution &execution) -> QVariant { return execution.price.steps(); }},
    {"quantity",
     [](Execution *execution, const QVariant &value) { execution->quantity = value.toLongLong(); },
     [](const Execution &execution) -> QVariant { return execution.quantity; }},
    {"amount",
     [](Execution *execution, const QVariant &value) { execution->amount = ColumnValue::money(value); },
     [](const Execution &execution) -> QVariant { return execution.amount.steps(); }},
    {"fee", [](Execution *execution, const QVariant &value) { execution->fee = ColumnValue::money(value); },
     [](const Execution &execution) -> QVariant { return execution.fee.steps(); }},
    {"order_no", [](Execution *execution, const QVariant &value) { execution->orderNo = value.toString(); },
     [](const Execution &execution) -> QVariant { return notNull(execution.orderNo); }},
    {"deal_no", [](Execution *execution, const QVariant &value) { execution->dealNo = value.toString(); },
     [](const Execution &execution) -> QVariant { return notNull(execution.dealNo); }},
    {"stamp_duty",
     [](Execution *execution, const QVariant &value) { execution->stampDuty = ColumnValue::money(value); },
     [](const Execution &execution) -> QVariant { return execution.stampDuty.steps(); }},
};

constexpr int columnCount = static_cast<int>(std::size(columns));

QStringList names(const QString &prefix)
{
    QStringList names;
    for (const Column &column : columns) {
        names.append(prefix + QLatin1String(column.name));
    }
    return names;
}

} // namespace

QString ofKnownSecurity()
{
    return names(QStringLiteral("e.")).join(QLatin1Char(','));
}

QString withSecurity()
{
    return ofKnownSecurity() + QStringLiteral(",s.code,s.market");
}

int count()
{
    return columnCount;
}

Execution read(const Rows &row, const SecurityId &security)
{
    Execution execution{security, Side::Buy, TradingDate::first(), ClockTime()};
    for (int i = 0; i < columnCount; ++i) {
        columns[i].read(&execution, row.value(i));
    }
    return execution;
}

Execution read(const Rows &row)
{
    return read(row, {row.value(columnCount).toString(), ColumnValue::market(row.value(columnCount + 1))});
}

QString insertion()
{
    return QStringLiteral("INSERT INTO execution (security_id,statement_id,%1) VALUES (?,?%2)")
        .arg(names(QString()).join(QLatin1Char(',')), QStringLiteral(",?").repeated(columnCount));
}

QVariantList insertedValues(const Execution &execution, qint64 securityId, const QVariant &statementId)
{
    QVariantList values{securityId, statementId};
    for (const Column &column : columns) {
        values.append(column.write(execution));
    }
    return values;
}

} // namespace TradeModule::ExecutionColumns
