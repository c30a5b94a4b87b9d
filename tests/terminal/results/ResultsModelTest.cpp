#include "terminal/results/ResultsModel.h"
#include "tests/terminal/results/SomeResults.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Terminal {
namespace {

constexpr qint64 page = ResultPages::rowsOfPage;
constexpr int many = 100000;

class ResultsModelTest : public ::testing::Test
{
protected:
    ResultsModelTest() { m_model.setWish({ResultGroup::Sale}); }

    QVariant data(int row, ResultField field, int role = Qt::DisplayRole)
    {
        const auto &fields = Trading::fieldsOf(ResultGroup::Sale);
        const auto place = std::find(fields.begin(), fields.end(), field) - fields.begin();
        return m_model.data(m_model.index(row, static_cast<int>(place)), role);
    }
    QString text(int row, ResultField field) { return data(row, field).toString(); }

    ResultsModel m_model;
};

TEST_F(ResultsModelTest, WantsTheFirstRowsOfAListThatItDoesNotKnow)
{
    EXPECT_EQ(m_model.rowCount({}), 0);
    EXPECT_EQ(m_model.wanted().first, 0);
    EXPECT_EQ(m_model.wanted().most, page);
    EXPECT_EQ(m_model.wanted().wish.group, ResultGroup::Sale);
}

TEST_F(ResultsModelTest, HasAllRowsOfAListOfWhichAFewHaveCome)
{
    m_model.take(salesPart(0, page, many));

    EXPECT_EQ(m_model.rowCount({}), many);
    EXPECT_EQ(text(3, ResultField::Profit), QStringLiteral("+1,234.50"));
    EXPECT_EQ(text(50000, ResultField::Profit), QString());
}

TEST_F(ResultsModelTest, WantsWhatIsLookedAt)
{
    m_model.take(salesPart(0, page, many));
    const QSignalSpy wanted(&m_model, &ResultsModel::rowsWanted);

    m_model.setView(50010, 50030);

    EXPECT_EQ(wanted.count(), 1);
    EXPECT_EQ(m_model.wanted().first, 50000);
    m_model.take(salesPart(50000, page, many));
    EXPECT_EQ(text(50012, ResultField::Quantity), QStringLiteral("50,012"));
    EXPECT_FALSE(m_model.isMissing());
}

TEST_F(ResultsModelTest, WantsBothPagesThatAreInView)
{
    m_model.take(salesPart(0, page, many));
    m_model.setView(static_cast<int>(page) - 5, static_cast<int>(page) + 5);

    EXPECT_EQ(m_model.wanted().first, page);
}

/// So that a change of the ledger is noticed whose notification was lost.
TEST_F(ResultsModelTest, WantsTheRowsInViewAgainWhenNoneAreMissing)
{
    m_model.take(salesPart(0, page, many));
    m_model.setView(3, 8);

    EXPECT_EQ(m_model.wanted().first, 0);
}

TEST_F(ResultsModelTest, AsksForTheRowsInViewWhenTheLedgerHasChanged)
{
    m_model.take(salesPart(0, page, many));
    m_model.take(salesPart(page, page, many));
    m_model.setView(static_cast<int>(page) - 5, static_cast<int>(page) + 5);
    const QSignalSpy wanted(&m_model, &ResultsModel::rowsWanted);

    m_model.take(salesPart(0, page, many + 1, QStringLiteral("2")));

    EXPECT_EQ(m_model.rowCount({}), many + 1);
    EXPECT_EQ(wanted.count(), 1);
    EXPECT_EQ(m_model.wanted().first, page);
}

TEST_F(ResultsModelTest, LeavesRowsOfAnotherListAlone)
{
    ResultsPart other = salesPart(0, page, many);
    other.wish.group = ResultGroup::Trip;
    m_model.take(other);
    other.wish = {ResultGroup::Sale, ResultField::Profit, true};
    m_model.take(other);

    EXPECT_EQ(m_model.rowCount({}), 0);
}

TEST_F(ResultsModelTest, ShrinksWithItsList)
{
    m_model.take(salesPart(0, page, many));
    m_model.setView(90000, 90010);

    m_model.take(salesPart(0, 10, 10, QStringLiteral("2")));

    EXPECT_EQ(m_model.rowCount({}), 10);
    EXPECT_FALSE(m_model.isMissing());
}

TEST_F(ResultsModelTest, HidesAmountsAndNothingElse)
{
    m_model.take(salesPart(0, page, many));
    m_model.setAmountsHidden(true);

    for (const ResultField hidden :
         {ResultField::Quantity, ResultField::Amount, ResultField::Fee, ResultField::StampDuty,
          ResultField::SoldCost, ResultField::Profit, ResultField::Percent}) {
        EXPECT_EQ(text(0, hidden), QStringLiteral("***"));
        EXPECT_FALSE(data(0, hidden, Qt::ForegroundRole).isValid());
    }
    EXPECT_EQ(text(0, ResultField::Code), QStringLiteral("600519"));
    EXPECT_EQ(text(0, ResultField::Price), QStringLiteral("1700.00"));
    EXPECT_EQ(text(500, ResultField::Profit), QString()); // has not come
}

TEST_F(ResultsModelTest, ColoursWhatWasEarned)
{
    ChartTheme theme;
    theme.rise = Qt::red;
    theme.fall = Qt::green;
    m_model.setTheme(theme);
    ResultsPart part = salesPart(0, 1, 2);
    part.rows.push_back(saleRow(1, QStringLiteral("-5.00")));
    m_model.take(part);

    EXPECT_EQ(data(0, ResultField::Profit, Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(data(1, ResultField::Profit, Qt::ForegroundRole).value<QColor>(), QColor(Qt::green));
    EXPECT_FALSE(data(0, ResultField::Amount, Qt::ForegroundRole).isValid());
}

} // namespace
} // namespace Terminal
