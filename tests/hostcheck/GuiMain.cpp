#include <gmock/gmock.h>

#include <QGuiApplication>

#include <ctime>

int main(int argc, char *argv[])
{
    qputenv("TZ", "Asia/Shanghai"); // where the overlays' today is
    tzset();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TRADECHARTOBJECT_CHECK_PATIENCE", "0"); // what is owed at the end was owed long enough
    ::testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
