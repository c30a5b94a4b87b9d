#include "terminal/trade/OrderResults.h"

#include <gmock/gmock.h>

#include <QLabel>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using Tone = OrderResults::Tone;

class OrderResultsTest : public ::testing::Test
{
protected:
    void tell(const char *number, const char *text, Tone tone = Tone::Plain)
    {
        m_results.tell(QLatin1String(number), QLatin1String(text), tone);
    }

    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        for (const QLabel *const label : m_results.findChildren<QLabel *>()) {
            if (!label->isHidden()) {
                texts.push_back(label->text().toStdString());
            }
        }
        return texts;
    }

    OrderResults m_results;
};

TEST_F(OrderResultsTest, OfTwoOrdersStandBesideEachOther)
{
    tell("1", "one: refused", Tone::Bad);
    tell("2", "two: accepted", Tone::Good);
    EXPECT_THAT(lines(), ElementsAre("two: accepted", "one: refused"));
}

TEST_F(OrderResultsTest, OfOneOrderFollowOneAnother)
{
    tell("1", "one: no answer");
    tell("2", "two: accepted");
    tell("1", "one: accepted");
    EXPECT_THAT(lines(), ElementsAre("one: accepted", "two: accepted"));
}

TEST_F(OrderResultsTest, AreAFew)
{
    for (const char *const order : {"1", "2", "3", "4"}) {
        tell(order, order);
    }
    EXPECT_THAT(lines(), ElementsAre("4", "3", "2"));
    m_results.clear();
    EXPECT_THAT(lines(), ElementsAre());
}

TEST_F(OrderResultsTest, ShowTextAsItIsWritten)
{
    tell("1", "<b>refused</b>");
    EXPECT_EQ(m_results.findChild<QLabel *>()->textFormat(), Qt::PlainText);
}

} // namespace
} // namespace Terminal
