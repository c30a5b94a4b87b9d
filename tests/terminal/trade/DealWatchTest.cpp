#include "terminal/trade/DealWatch.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

using namespace TradeChart::OrderStatus;

class DealWatchTest : public ::testing::Test
{
protected:
    DealWatchTest()
    {
        QObject::connect(&m_watch, &DealWatch::dealt, &m_watch,
                         [this](const OrderRecord &order) { m_told.append(order.number + order.status); });
    }

    static OrderRecord order(const char *number, const char *status)
    {
        OrderRecord order;
        order.number = QLatin1String(number);
        order.status = QLatin1String(status);
        return order;
    }
    void hear(const char *number, const char *status)
    {
        m_watch.hear(QLatin1String(number), QLatin1String(status));
    }

    DealWatch m_watch;
    QStringList m_told;
};

TEST_F(DealWatchTest, TellsEachPartOfAnOrderAndItsEnd)
{
    m_watch.take({order("3", Quoted)});
    hear("3", PartDeal);
    hear("3", PartDeal);
    hear("3", Dealed);
    EXPECT_EQ(m_told, (QStringList{QStringLiteral("37"), QStringLiteral("37"), QStringLiteral("38")}));
}

TEST_F(DealWatchTest, TellsAnEndOnce)
{
    m_watch.take({order("3", Quoted)});
    hear("3", Dealed);
    hear("3", Dealed);
    EXPECT_EQ(m_told.size(), 1);
}

TEST_F(DealWatchTest, TellsNothingOfOrdersThatWereOverBefore)
{
    m_watch.take({order("3", Dealed), order("4", Canceled)});
    hear("3", Dealed);
    hear("4", Dealed);
    hear("5", Dealed);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(DealWatchTest, TellsNothingOfPlacingAndCancelling)
{
    m_watch.take({order("3", Quoting)});
    for (const char *const status :
         {Quoted, QuotedWaittingCancel, Canceled, PartDealWaittingCancel, PartCanceled}) {
        hear("3", status);
    }
    EXPECT_TRUE(m_told.isEmpty());
}

} // namespace
} // namespace Terminal
