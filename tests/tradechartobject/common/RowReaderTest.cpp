#include "tradechartobject/common/RowReader.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

using TradeChart::RowColumn;
using TradeChart::RowReader;

namespace {

struct Texts
{
    QString price;
    QString qty;
    int taken = 0; ///< prices
};

void takePrice(Texts &texts, const QString &text)
{
    texts.price = text;
    ++texts.taken;
}

const RowColumn<Texts> columns[] = {{"qty", [](Texts &texts, const QString &text) { texts.qty = text; }},
                                    {"price", takePrice}};

/// Reads rows one after the other; "price/qty" of each.
class RowReaderTest : public ::testing::Test
{
protected:
    std::string read(const char *json)
    {
        const Texts &texts = readTexts(json);
        return (texts.price + QLatin1Char('/') + texts.qty).toStdString();
    }

    const Texts &readTexts(const char *json) { return m_reader.read(QJsonDocument::fromJson(json).object()); }

private:
    RowReader<Texts, 2> m_reader{columns};
};

TEST_F(RowReaderTest, ReadsTheTextsOfItsColumns)
{
    EXPECT_EQ(read(R"({"price":"10.5","qty":"300"})"), "10.5/300");
    EXPECT_EQ(read(R"({"price":"10.6","qty":"400"})"), "10.6/400");
}

TEST_F(RowReaderTest, FindsTextsThatStandElsewhereThanInTheRowBefore)
{
    EXPECT_EQ(read(R"({"price":"1","qty":"2"})"), "1/2");
    EXPECT_EQ(read(R"({"a":"x","price":"3","quality":"y","qty":"4","z":"z"})"), "3/4");
    EXPECT_EQ(read(R"({"price":"5","qty":"6"})"), "5/6");
}

TEST_F(RowReaderTest, LeavesEmptyWhatARowDoesNotHave)
{
    EXPECT_EQ(read(R"({"price":"1","qty":"2"})"), "1/2");
    EXPECT_EQ(read(R"({"price":"3"})"), "3/");
    EXPECT_EQ(read(R"({"qty":"4"})"), "/4");
    EXPECT_EQ(read("{}"), "/");
    EXPECT_EQ(read(R"({"price":"5","qty":"6"})"), "5/6");
}

TEST_F(RowReaderTest, DoesNotTakeTheTextOfAnotherKeyInTheSamePlace)
{
    EXPECT_EQ(read(R"({"price":"1","qty":"2"})"), "1/2");
    EXPECT_EQ(read(R"({"prices":"3","qtys":"4"})"), "/");
    EXPECT_EQ(read(R"({"Price":"5","Qty":"6"})"), "/");
}

TEST_F(RowReaderTest, TakesATextAnewOnlyWhenItDiffersFromTheRowBefore)
{
    const int before = readTexts(R"({"price":"1","qty":"2"})").taken;
    EXPECT_EQ(readTexts(R"({"price":"1","qty":"3"})").taken, before);
    EXPECT_EQ(readTexts(R"({"a":"x","price":"1"})").taken, before);
    EXPECT_EQ(readTexts(R"({"price":"2","qty":"3"})").taken, before + 1);
}

TEST_F(RowReaderTest, TellsTextsApartThatAreAlike)
{
    EXPECT_EQ(read(R"({"price":"1","qty":""})"), "1/");
    EXPECT_EQ(read(R"({"price":"1.","qty":"中"})"), "1./中");
    EXPECT_EQ(read(R"({"price":"2.","qty":"中文"})"), "2./中文");
    EXPECT_EQ(read(R"({"price":1,"qty":"文中"})"), "/文中");
    EXPECT_EQ(read(R"({"price":"1","qty":["文中"]})"), "1/");
}

TEST_F(RowReaderTest, LeavesEmptyWhatIsNoText)
{
    EXPECT_EQ(read(R"({"price":10.5,"qty":["300"]})"), "/");
    EXPECT_EQ(read(R"({"price":null,"qty":"2"})"), "/2");
}

} // namespace
