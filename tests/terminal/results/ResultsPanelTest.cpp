#include "terminal/results/ResultsPanel.h"
#include "terminal/results/ResultsView.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/results/SomeResults.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

namespace Terminal {
namespace {

constexpr int manySecurities = 100000;

class ResultsPanelTest : public ::testing::Test
{
protected:
    ResultsPanelTest()
    {
        m_panel.resize(1200, 300);
        m_panel.show();
        m_panel.setAnswering(true);
        QObject::connect(&m_panel, &ResultsPanel::placeAsked,
                         [this](const ResultsPlace &place) { m_places.push_back(place); });
    }

    void showSales()
    {
        choose("resultsGroups", 3);
        model()->take(salesPart(0, ResultPages::rowsOfPage, manySecurities));
    }

    void choose(const char *box, int place)
    {
        auto *const choices = m_panel.findChild<QComboBox *>(QLatin1String(box));
        choices->setCurrentIndex(place);
        Q_EMIT choices->activated(place);
    }

    std::string labels()
    {
        QStringList texts;
        for (const QLabel *const label : m_panel.findChildren<QLabel *>()) {
            texts.append(label->text());
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }

    ResultsModel *model() { return m_panel.model(); }
    ResultsView *view() { return m_panel.view(); }

    ResultsPanel m_panel;
    std::vector<ResultsPlace> m_places;
};

using ::testing::HasSubstr;
using ::testing::Not;

TEST_F(ResultsPanelTest, HasALineWithTheSums)
{
    showSales();

    EXPECT_THAT(labels(), HasSubstr("Rows: 100,000 · Profit -12,345.00 · Amount 1,700,000.00"));
}

TEST_F(ResultsPanelTest, HidesTheSumsWithTheAmounts)
{
    showSales();
    m_panel.setAmountsHidden(true);

    EXPECT_THAT(labels(), HasSubstr("Profit ***"));
    EXPECT_THAT(labels(), Not(HasSubstr("12,345")));
}

TEST_F(ResultsPanelTest, NamesTheWayToReckonCostsAndStaysWithItUntilTheModuleSaysOtherwise)
{
    showSales();
    QStringList chosen;
    QObject::connect(&m_panel, &ResultsPanel::costMethodChosen,
                     [&chosen](const QString &word) { chosen.append(word); });
    const auto *const methods = m_panel.findChild<QComboBox *>(QStringLiteral("resultsMethods"));
    EXPECT_EQ(methods->currentData().toString(), QStringLiteral("average"));

    choose("resultsMethods", 2);

    EXPECT_EQ(chosen, QStringList(QStringLiteral("fifo")));
    EXPECT_EQ(methods->currentData().toString(), QStringLiteral("average"));
    ResultsPart part = salesPart(0, 1, 1, QStringLiteral("2"));
    part.costMethod = QStringLiteral("fifo");
    model()->take(part);
    EXPECT_EQ(methods->currentData().toString(), QStringLiteral("fifo"));
}

TEST_F(ResultsPanelTest, LeadsFromARowToItsPlaceByAClickAndByEnter)
{
    showSales();

    QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view()->visualRect(model()->index(1, 2)).center());
    QTest::keyClick(view(), Qt::Key_Return);

    ASSERT_EQ(m_places.size(), 2U);
    EXPECT_EQ(m_places[0].code, QStringLiteral("600519"));
    ASSERT_TRUE(m_places[0].day);
    EXPECT_EQ(m_places[0].day->number(), 20240103);
    EXPECT_EQ(m_places[1].code, QStringLiteral("600519"));
}

TEST_F(ResultsPanelTest, LeadsFromAMonthToItsFirstDayOnWhicheverChartIsShown)
{
    choose("resultsGroups", 1);
    ResultsPart months{{ResultGroup::Month}};
    months.rows = {{QStringLiteral("2024-02")}};
    months.count = 1;
    months.state = QStringLiteral("1");
    model()->take(months);
    view()->focusRows();

    QTest::keyClick(view(), Qt::Key_Enter);

    ASSERT_EQ(m_places.size(), 1U);
    EXPECT_EQ(m_places[0].code, QString());
    ASSERT_TRUE(m_places[0].day);
    EXPECT_EQ(m_places[0].day->number(), 20240201);
}

/// What is most first, then what is least, then as the module lists them.
TEST_F(ResultsPanelTest, OrdersItsRowsByAColumnOfWhichTheTitleIsClicked)
{
    showSales();
    const int profit = 11;
    const auto click = [&] { Q_EMIT view()->horizontalHeader()->sectionClicked(profit); };

    click();
    EXPECT_EQ(model()->wish(), (ResultsWish{ResultGroup::Sale, ResultField::Profit, true}));
    EXPECT_TRUE(view()->horizontalHeader()->isSortIndicatorShown());
    click();
    EXPECT_EQ(model()->wish(), (ResultsWish{ResultGroup::Sale, ResultField::Profit, false}));
    click();
    EXPECT_EQ(model()->wish(), (ResultsWish{ResultGroup::Sale}));
    EXPECT_FALSE(view()->horizontalHeader()->isSortIndicatorShown());
}

TEST_F(ResultsPanelTest, OrdersItsRowsByKeyboard)
{
    showSales();
    view()->setCurrentIndex(model()->index(0, 11));

    QTest::keyClick(view(), Qt::Key_Space);

    EXPECT_EQ(model()->wish(), (ResultsWish{ResultGroup::Sale, ResultField::Profit, true}));
}

TEST_F(ResultsPanelTest, AsksForTheRowsThatItIsScrolledTo)
{
    showSales();
    QScrollBar *const bar = view()->verticalScrollBar();
    ASSERT_TRUE(waitUntil([bar] { return bar->maximum() > manySecurities / 2; }));
    EXPECT_FALSE(model()->isMissing());

    bar->setValue(bar->maximum());

    EXPECT_TRUE(waitUntil([this] { return model()->isMissing(); }));
    EXPECT_EQ(model()->wanted().first, manySecurities - ResultPages::rowsOfPage);
}

TEST_F(ResultsPanelTest, SaysWhyItsFiguresMayBeOld)
{
    showSales();

    m_panel.setRefusal(QStringLiteral("\"cmd\" is \"Results\", which this trading module does not know"));
    EXPECT_THAT(labels(), HasSubstr("refused: \"cmd\" is"));
    m_panel.setAnswering(false);
    EXPECT_THAT(labels(), HasSubstr("no answer from the trading module"));
    EXPECT_FALSE(m_panel.findChild<QPushButton *>(QStringLiteral("resultsExport"))->isEnabled());
}

TEST_F(ResultsPanelTest, NamesTheSecuritiesOfWhichStatementsAreMissing)
{
    choose("resultsGroups", 3);
    ResultsPart part = salesPart(0, 1, 1);
    part.incomplete = QStringList{QStringLiteral("000001"), QStringLiteral("600519")};
    model()->take(part);

    EXPECT_THAT(labels(), HasSubstr("earlier statements are missing: 000001, 600519"));
}

TEST_F(ResultsPanelTest, DoesNotMakeTheWindowWide)
{
    showSales();

    EXPECT_LT(m_panel.minimumSizeHint().width(), 700);
}

} // namespace
} // namespace Terminal
