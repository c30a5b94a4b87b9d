// Files of daily bars that are read once, and again when they have changed.
#include "terminal/data/DailySheets.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Terminal {
namespace {

class DailySheetsTest : public DataFiles
{
protected:
    QString writeBars(const char *close)
    {
        return write(QStringLiteral("600519.csv"),
                     QByteArray("date,open,high,low,close,volume\n20240103,10,19,9,") + close + ",100\n");
    }

    double close(const QString &path) { return m_sheets.read(path, {})->value().bars.back().close; }

    DailySheets m_sheets;
};

TEST_F(DailySheetsTest, AreReadOnceWhileTheFileDoesNotChange)
{
    const QString path = QStringLiteral(TRADECHART_EXAMPLES "/daily/600519.csv");
    const DailySheets::Sheet sheet = m_sheets.read(path, {});
    ASSERT_TRUE(*sheet) << qPrintable(sheet->error());

    EXPECT_EQ(m_sheets.read(path, {}), sheet);
}

TEST_F(DailySheetsTest, AreReadAgainInTheMomentInWhichTheFileChanges)
{
    for (const char *const price : {"10", "11", "12"}) {
        EXPECT_EQ(close(writeBars(price)), QByteArray(price).toDouble());
    }
}

TEST_F(DailySheetsTest, SeeAFileOfTheSameSizeWhoseTimeWasTurnedBack)
{
    const std::filesystem::path path = writeBars("10").toStdString();
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(path, longAgo);
    ASSERT_EQ(close(QString::fromStdString(path.string())), 10);

    writeBars("11");
    std::filesystem::last_write_time(path, longAgo);

    EXPECT_EQ(close(QString::fromStdString(path.string())), 11);
}

TEST_F(DailySheetsTest, AreReadAgainWhenTheyCouldNotBeRead)
{
    const QString path = write(QStringLiteral("600519.csv"), "no bars\n");
    ASSERT_FALSE(*m_sheets.read(path, {}));
    QFile::remove(path);
    ASSERT_FALSE(*m_sheets.read(path, {}));

    EXPECT_EQ(close(writeBars("10")), 10);
}

} // namespace
} // namespace Terminal
