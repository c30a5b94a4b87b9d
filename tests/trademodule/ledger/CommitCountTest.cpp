// What a change costs: a commit waits for the disk.
#include "tests/trademodule/support/ExchangeFixture.h"

#include <QFile>
#include <QtEndian>

namespace TradeModule {

namespace {

/// How often a file's write-ahead log was committed to since it was emptied last: the frames that end a
/// transaction say how large the file is afterwards.
int commitsIn(const QString &log)
{
    constexpr int headerSize = 32;
    constexpr int frameHeaderSize = 24;
    QFile file(log);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto numberAt = [&bytes](int place) { return qFromBigEndian<quint32>(bytes.constData() + place); };
    const int frameSize = frameHeaderSize + static_cast<int>(numberAt(8));
    const QByteArray salt = bytes.mid(16, 8);
    int commits = 0;
    for (int frame = headerSize; frame + frameSize <= bytes.size(); frame += frameSize) {
        const bool isOfThisLog = bytes.mid(frame + 8, 8) == salt;
        commits += isOfThisLog && numberAt(frame + 4) != 0 ? 1 : 0;
    }
    return commits;
}

class CommitCount : public PaperExchangeOfADay
{
protected:
    int commits() const { return commitsIn(location() + QStringLiteral("-wal")); }
};

} // namespace

TEST_F(CommitCount, SeesEveryCommit)
{
    const int before = commits();
    setCash(1000);
    setCash(2000);

    EXPECT_EQ(commits(), before + 2);
}

TEST_F(CommitCount, OfAnOrderThatIsPlacedAndDealtIsThree)
{
    const int before = commits();

    const Order order = exchange().place(bank(), Direction::Buy, yuan(10), 100, QStringLiteral("desk-1"));
    exchange().take(bar(1001, 10, 10, 10));

    EXPECT_EQ(statusOf(order), code(TradeChart::OrderStatus::Dealed));
    EXPECT_EQ(commits(), before + 3); // placed, reported, dealt
}

TEST_F(CommitCount, OfAnOrderThatCannotBeEndedIsNone)
{
    const Order order = exchange().place(bank(), Direction::Buy, yuan(9), 100);
    exchange().report();
    exchange().cancel(order.date, order.number);
    ledger().database()->run(QStringLiteral(
        "CREATE TRIGGER never BEFORE UPDATE ON trade_order BEGIN SELECT RAISE(ABORT, 'never'); END"));
    const LogCapture log;
    exchange().settle(); // writes down the clock
    const int before = commits();

    exchange().settle();
    exchange().settle();

    EXPECT_EQ(statusOf(order), code(TradeChart::OrderStatus::QuotedWaittingCancel));
    EXPECT_EQ(commits(), before);
}

} // namespace TradeModule
