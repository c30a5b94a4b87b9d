// The days of which a folder has minutes.
#include "terminal/data/RecordedDays.h"
#include "tests/terminal/support/DataFiles.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordedDaysTest : public DataFiles
{
protected:
    void record(const char *file) { write(QLatin1String(file), {}); }

    /// The folder was changed so long ago.
    void setChanged(std::chrono::seconds ago)
    {
        std::filesystem::last_write_time(folder().toStdString(),
                                         std::filesystem::file_time_type::clock::now() - ago);
    }

    static constexpr std::chrono::seconds longAgo{3600};
    RecordedDays days{folder()};
    const QString code = QStringLiteral("600519");
};

TEST_F(RecordedDaysTest, AreThoseOfTheSecurityOldestFirst)
{
    record("600519_20240103.csv");
    record("600519_20240102.csv");
    record("000001_20240104.csv");
    EXPECT_THAT(days.of(code), ElementsAre(onDay(20240102), onDay(20240103)));
}

TEST_F(RecordedDaysTest, LeaveOutFilesOfOtherNames)
{
    for (const char *const file : {"600519.csv", "600519_2024.csv", "600519_20240231.csv",
                                   "600519_20240102.txt", "_20240102.csv", "600519_20240102.csv.bak"}) {
        record(file);
    }
    EXPECT_THAT(days.of(code), IsEmpty());
}

TEST_F(RecordedDaysTest, AreNoneInAFolderThatIsNotThere)
{
    EXPECT_THAT(RecordedDays(QStringLiteral("/nowhere/at/all")).of(code), IsEmpty());
}

TEST_F(RecordedDaysTest, AreListedOnceWhileTheFolderDoesNotChange)
{
    record("600519_20240102.csv");
    setChanged(longAgo);
    const auto changed = std::filesystem::last_write_time(folder().toStdString());
    ASSERT_THAT(days.of(code), ElementsAre(onDay(20240102)));
    record("600519_20240103.csv");
    std::filesystem::last_write_time(folder().toStdString(), changed);
    EXPECT_THAT(days.of(code), ElementsAre(onDay(20240102))) << "the folder looks as it did";
}

TEST_F(RecordedDaysTest, AreListedAgainWhenTheFolderHasChanged)
{
    record("600519_20240102.csv");
    setChanged(longAgo);
    ASSERT_THAT(days.of(code), ElementsAre(onDay(20240102)));
    record("600519_20240103.csv");
    EXPECT_THAT(days.of(code), ElementsAre(onDay(20240102), onDay(20240103)));
}

TEST_F(RecordedDaysTest, SeeAFileThatCameInTheSameMoment)
{
    record("600519_20240102.csv");
    days.of(code);
    const auto changed = std::filesystem::last_write_time(folder().toStdString());
    record("600519_20240103.csv");
    std::filesystem::last_write_time(folder().toStdString(), changed);
    EXPECT_THAT(days.of(code), ElementsAre(onDay(20240102), onDay(20240103)));
}

} // namespace
} // namespace Terminal
