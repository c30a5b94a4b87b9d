#include "tradechartobject/common/RowReader.h"
#include "tests/support/ReadingWay.h"

#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/TradeMessage.h"

#include <gmock/gmock.h>

#include <cmath>

using ::testing::ElementsAre;
using TradeChart::RowColumn;
using TradeChart::RowField;
using TradeChart::TradeMessage;

namespace {

struct Texts
{
    QString price;
    QString qty;
    int taken = 0; ///< prices
};

void takePrice(Texts &texts, const RowField &field)
{
    texts.price = field.text().toString();
    ++texts.taken;
}

const RowColumn<Texts> columns[] = {
    {"qty", [](Texts &texts, const RowField &field) { texts.qty = field.text().toString(); }},
    {"price", takePrice}};

/// Reads the rows of an answer in either way.
class RowReader : public ::testing::TestWithParam<ReadingWay>
{
protected:
    /// Calls use(record) for each row.
    template <class Record, std::size_t count, class Use>
    void readRows(const RowColumn<Record> (&wanted)[count], const QByteArray &rows, Use use)
    {
        const auto answer = TradeMessage::parse(readIn(GetParam(), "{\"data\":[" + rows + "]}"));
        ASSERT_TRUE(answer);
        answer->rows().read(wanted, [&use](const Record &record, const auto &) { use(record); });
    }

    /// "price/qty" of each row.
    std::vector<std::string> read(const QByteArray &rows)
    {
        std::vector<std::string> found;
        readRows(columns, rows, [&found](const Texts &texts) {
            found.push_back((texts.price + QLatin1Char('/') + texts.qty).toStdString());
        });
        return found;
    }
};

TEST_P(RowReader, ReadsTheTextsOfItsColumns)
{
    EXPECT_THAT(read(R"({"price":"10.5","qty":"300"},{"price":"10.6","qty":"400"})"),
                ElementsAre("10.5/300", "10.6/400"));
}

TEST_P(RowReader, FindsTextsThatStandElsewhereThanInTheRowBefore)
{
    EXPECT_THAT(read(R"({"price":"1","qty":"2"},
                        {"a":"x","price":"3","quality":"y","qty":"4","z":"z"},
                        {"qty":"6","price":"5"})"),
                ElementsAre("1/2", "3/4", "5/6"));
}

TEST_P(RowReader, LeavesEmptyWhatARowDoesNotHave)
{
    EXPECT_THAT(read(R"({"price":"1","qty":"2"},{"price":"3"},{"qty":"4"},{},{"price":"5","qty":"6"})"),
                ElementsAre("1/2", "3/", "/4", "/", "5/6"));
}

TEST_P(RowReader, DoesNotTakeTheTextOfAnotherKeyInTheSamePlace)
{
    EXPECT_THAT(read(R"({"price":"1","qty":"2"},{"prices":"3","qtys":"4"},{"Price":"5","Qty":"6"})"),
                ElementsAre("1/2", "/", "/"));
}

TEST_P(RowReader, TakesATextAnewOnlyWhenItDiffersFromTheRowBefore)
{
    std::vector<int> taken;
    readRows(columns,
             R"({"price":"1","qty":"2"},{"price":"1","qty":"3"},{"a":"x","price":"1"},{"price":"2"})",
             [&taken](const Texts &texts) { taken.push_back(texts.taken); });
    EXPECT_THAT(taken, ElementsAre(2, 2, 2, 3)) << "once before all rows, for a row without it";
}

TEST_P(RowReader, TellsTextsApartThatAreAlike)
{
    EXPECT_THAT(read(R"({"price":"1","qty":""},{"price":"1.","qty":"中"},{"price":"2.","qty":"中文"},
                        {"price":1,"qty":"文中"},{"price":"1"},{"price":"10"})"),
                ElementsAre("1/", "1./中", "2./中文", "/文中", "1/", "10/"));
}

TEST_P(RowReader, LeavesEmptyWhatIsNoText)
{
    EXPECT_THAT(read(R"({"price":10.5,"qty":true},{"price":null,"qty":"2"})"), ElementsAre("/", "/2"));
    EXPECT_THAT(read(R"({"price":10.5,"qty":["300"]})"), ElementsAre("/"));
}

TEST_P(RowReader, ReadsEscapesAsTheCharactersThatTheyStandFor)
{
    EXPECT_THAT(read(R"({"price":"\u6c5f\u5C71","qty":"a\"b\\c\/\t"},{"price":"x","qty":"\ud83d\ude00"})"),
                ElementsAre("江山/a\"b\\c/\t", "x/😀"));
}

struct Values
{
    bool isTrue = true;
    double number = -1;
};

const RowColumn<Values> valueColumns[] = {
    {"is", [](Values &values, const RowField &field) { values.isTrue = field.isTrue(); }},
    {"n", [](Values &values, const RowField &field) { values.number = field.number(); }}};

TEST_P(RowReader, ReadsTruthsAndNumbers)
{
    std::vector<std::pair<bool, double>> found;
    readRows(valueColumns,
             R"({"is":true,"n":10.5},{"is":false,"n":-300},{"is":"true","n":"7"},{"n":-0.0},{"n":0.001})",
             [&found](const Values &values) { found.emplace_back(values.isTrue, values.number); });
    EXPECT_THAT(found, ElementsAre(std::pair(true, 10.5), std::pair(false, -300.0), std::pair(false, 0.0),
                                   std::pair(false, 0.0), std::pair(false, 0.001)));
    EXPECT_FALSE(std::signbit(found[3].second)) << "as Qt reads it";
}

INSTANTIATE_TEST_SUITE_P(Ways, RowReader, bothWays, nameOfWay);

} // namespace
