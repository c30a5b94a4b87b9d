#include "trademodule/ledger/ToldStatement.h"

#include "trademodule/ledger/ColumnValue.h"

#include <QDataStream>
#include <QSet>

#include <algorithm>

namespace TradeModule {

namespace {

constexpr QDataStream::Version format = QDataStream::Qt_5_12;
constexpr int entriesOfAPiece = 10000;

// The order of the fields is that of the ledgers that are there: do not change it.
QDataStream &operator<<(QDataStream &stream, const Execution &entry)
{
    return stream << marketLetters(entry.security.market) << entry.security.code
                  << static_cast<qint8>(entry.side) << entry.date.number() << entry.time.number()
                  << entry.price.steps() << entry.quantity << entry.amount.steps() << entry.fee.steps()
                  << entry.stampDuty.steps() << entry.orderNo << entry.dealNo;
}

/// Codes that were read: a million entries share some hundreds of them.
using Codes = QSet<QString>;

Execution readExecution(QDataStream *stream, Codes *codes)
{
    QString market;
    qint8 side = 0;
    int date = 0;
    int time = 0;
    qint64 price = 0;
    qint64 amount = 0;
    qint64 fee = 0;
    qint64 stampDuty = 0;
    Execution entry{{}, Side::Buy, TradingDate::first(), ClockTime()};
    *stream >> market >> entry.security.code >> side >> date >> time >> price >> entry.quantity >> amount >>
        fee >> stampDuty >> entry.orderNo >> entry.dealNo;
    entry.security.code = *codes->insert(entry.security.code);
    entry.security.market = ColumnValue::market(market);
    entry.side = static_cast<Side>(side);
    entry.date = ColumnValue::date(date);
    entry.time = ColumnValue::time(time);
    entry.price = Money::ofSteps(price);
    entry.amount = Money::ofSteps(amount);
    entry.fee = Money::ofSteps(fee);
    entry.stampDuty = Money::ofSteps(stampDuty);
    return entry;
}

QDataStream &operator<<(QDataStream &stream, const MoneyEntry &entry)
{
    return stream << entry.date.number() << entry.time.number() << entry.kind << entry.amount.steps()
                  << entry.currency << entry.code << entry.note << entry.number;
}

MoneyEntry readMoney(QDataStream *stream)
{
    int date = 0;
    int time = 0;
    qint64 amount = 0;
    MoneyEntry entry;
    *stream >> date >> time >> entry.kind >> amount >> entry.currency >> entry.code >> entry.note >>
        entry.number;
    entry.date = ColumnValue::date(date);
    entry.time = ColumnValue::time(time);
    entry.amount = Money::ofSteps(amount);
    return entry;
}

/// One piece of a statement: some of its entries, and in the first one everything else.
QByteArray packed(const Statement &statement, int first, int count)
{
    constexpr int fastCompression = 1;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(format);
    const MoneyEntries money = first == 0 ? statement.money : MoneyEntries();
    stream << static_cast<qint8>(statement.doubt) << money.size();
    for (const MoneyEntry &entry : money) {
        stream << entry;
    }
    stream << count;
    for (int i = first; i < first + count; ++i) {
        stream << statement.executions[i];
    }
    return qCompress(bytes, fastCompression);
}

void unpack(const QByteArray &piece, Codes *codes, Statement *statement)
{
    const QByteArray bytes = qUncompress(piece);
    QDataStream stream(bytes);
    stream.setVersion(format);
    qint8 doubt = 0;
    int count = 0;
    stream >> doubt >> count;
    statement->doubt = static_cast<Doubt>(doubt);
    while (count-- > 0) {
        statement->money.append(readMoney(&stream));
    }
    stream >> count;
    while (count-- > 0) {
        statement->executions.append(readExecution(&stream, codes));
    }
}

} // namespace

void ToldStatement::keep(qint64 number, const Statement &statement)
{
    remove(number);
    QSqlQuery insertion = m_database->prepared(
        QStringLiteral("INSERT INTO told_statement (statement_id, part, entries) VALUES (?, ?, ?)"));
    int first = 0;
    do { // a statement of money alone has a piece, too
        const int count = std::min(entriesOfAPiece, statement.executions.size() - first);
        m_database->run(&insertion, {number, first, packed(statement, first, count)});
        first += count;
    } while (first < statement.executions.size());
}

Statement ToldStatement::read(qint64 number)
{
    Statement statement;
    statement.executions.reserve(pieces(number) * entriesOfAPiece); // a growing list would be there twice
    Rows rows = m_database->run(
        QStringLiteral("SELECT entries FROM told_statement WHERE statement_id = ? ORDER BY part"), {number});
    Codes codes;
    while (rows.next()) {
        unpack(rows.value(0).toByteArray(), &codes, &statement);
    }
    return statement;
}

int ToldStatement::pieces(qint64 number)
{
    Rows count = m_database->run(QStringLiteral("SELECT COUNT(*) FROM told_statement WHERE statement_id = ?"),
                                 {number});
    return count.next() ? count.value(0).toInt() : 0;
}

QVector<qint64> ToldStatement::after(qint64 number)
{
    Rows rows = m_database->run(QStringLiteral("SELECT DISTINCT statement_id FROM told_statement "
                                               "WHERE statement_id > ? ORDER BY statement_id"),
                                {number});
    QVector<qint64> numbers;
    while (rows.next()) {
        numbers.append(rows.value(0).toLongLong());
    }
    return numbers;
}

void ToldStatement::remove(qint64 number)
{
    m_database->run(QStringLiteral("DELETE FROM told_statement WHERE statement_id = ?"), {number});
}

} // namespace TradeModule
