#include <gmock/gmock.h>

#include <QCoreApplication>

#include <ctime>

int main(int argc, char *argv[])
{
    qputenv("TZ",
            "Asia/Shanghai"); // as the programs do: else "today" is another day than theirs for eight hours
    tzset();
    ::testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
