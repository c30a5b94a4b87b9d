// What a terminal starts for itself.
#include "terminal/services/TradeServices.h"

#include "endpoint/Announcement.h"
#include "terminal/services/ModuleWatch.h"
#include "tests/support/TestBroker.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <chrono>

using LocalCommunication::Announcement;

namespace Terminal {
namespace {

using namespace std::chrono_literals;

class TradeServicesTest : public ::testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }

    /// Numbers of the modules' processes so far.
    QList<QByteArray> started() const
    {
        QFile file(folder.filePath(QStringLiteral("module.started")));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().split('\n') : QList<QByteArray>();
    }

    QTemporaryDir folder;
};

TEST_F(TradeServicesTest, TellThatABusBeyondThisMachineIsNotEncrypted)
{
    write(QStringLiteral("endpoint.ini"), "[bus]\nurl=mqtt://192.0.2.1\nallow_plain=yes\n");
    TradeServices services({folder.path(), true, {}, {}, QStringLiteral("en")});
    QString told;
    QObject::connect(&services, &TradeServices::warned, &services,
                     [&told](const QString &text) { told += text; });
    services.start();
    EXPECT_TRUE(told.contains(QStringLiteral("not encrypted"))) << qPrintable(told);
}

TEST_F(TradeServicesTest, ReplaceTheirModuleWhenItHangs)
{
    const TestBroker broker;
    const QString hanging =
        write(QStringLiteral("module"), "#!/bin/sh\necho $$ >>\"$0.started\"\nexec sleep 60\n");
    TradeServices services({broker.address(), false, hanging, QStringLiteral("l"), QStringLiteral("en")});
    ModuleWatch watch(nullptr, 20ms);
    services.replaceWhenSilent(&watch);
    services.start();
    ASSERT_TRUE(waitUntil([this] { return started().size() == 1; }));
    Trading::TradePresence presence;
    presence.instance = QStringLiteral("i");
    presence.isOnline = true;
    presence.host = QSysInfo::machineHostName();
    presence.process = started().front().toLongLong();
    Announcement announcement;
    announcement.start(broker.address(),
                       {"Global", "TradePresence", presence.toJson(), presence.ended().toJson()});

    watch.start(broker.address());

    EXPECT_TRUE(waitUntil([this] { return started().size() == 2; }));
}

TEST_F(TradeServicesTest, LeaveTheModuleOfAnotherWindowAlone)
{
    const TestBroker broker;
    const QString standingBy =
        write(QStringLiteral("module"), "#!/bin/sh\necho $$ >>\"$0.started\"\nexec sleep 60\n");
    TradeServices services({broker.address(), false, standingBy, QStringLiteral("l"), QStringLiteral("en")});
    ModuleWatch watch(nullptr, 20ms);
    services.replaceWhenSilent(&watch);
    services.start();
    ASSERT_TRUE(waitUntil([this] { return started().size() == 1; }));
    Announcement announcement;
    announcement.start(broker.address(),
                       {"Global", "TradePresence", R"({"instance":"i","online":true,"process":1})",
                        R"({"instance":"i","online":false})"});
    watch.start(broker.address());
    ASSERT_TRUE(waitUntil([&watch] { return watch.state() == ModuleWatch::State::Silent; }));

    EXPECT_FALSE(waitUntil([this] { return started().size() > 1; }, 200ms));
}

} // namespace
} // namespace Terminal
