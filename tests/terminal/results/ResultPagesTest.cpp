#include "terminal/results/ResultPages.h"
#include "tests/terminal/results/SomeResults.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

constexpr qint64 page = ResultPages::rowsOfPage;
constexpr qint64 many = 100000;

TEST(ResultPages, HaveTheRowsThatHaveCome)
{
    ResultPages pages;
    EXPECT_EQ(pages.row(0), nullptr);

    pages.take(salesPart(page, page, many));

    EXPECT_EQ(pages.row(page - 1), nullptr);
    ASSERT_NE(pages.row(page + 3), nullptr);
    EXPECT_EQ(pages.row(page + 3)->at(6), QString::number(page + 3));
    EXPECT_EQ(pages.row(2 * page), nullptr);
}

TEST(ResultPages, TellTheFirstPageThatIsMissing)
{
    ResultPages pages;
    pages.take(salesPart(page, page, many));

    EXPECT_EQ(pages.missing(page, 2 * page - 1), -1);
    EXPECT_EQ(pages.missing(page, 2 * page), 2 * page);
    EXPECT_EQ(pages.missing(5, 10), 0);
}

TEST(ResultPages, ForgetWhatIsOfAnotherStateOfTheLedger)
{
    ResultPages pages;
    EXPECT_TRUE(pages.take(salesPart(0, page, many)));
    EXPECT_FALSE(pages.take(salesPart(page, page, many)));

    EXPECT_TRUE(pages.take(salesPart(page, page, many, QStringLiteral("2"))));

    EXPECT_EQ(pages.row(0), nullptr);
    EXPECT_NE(pages.row(page), nullptr);
}

TEST(ResultPages, KeepNoMoreThanSomebodyMayLookAt)
{
    ResultPages pages;
    for (qint64 number = 0; number <= ResultPages::mostPages; ++number) {
        pages.take(salesPart(number * page, page, many));
    }

    EXPECT_EQ(pages.row(0), nullptr); // farthest from the last
    EXPECT_NE(pages.row(page), nullptr);
    EXPECT_NE(pages.row(ResultPages::mostPages * page), nullptr);
}

} // namespace
} // namespace Terminal
