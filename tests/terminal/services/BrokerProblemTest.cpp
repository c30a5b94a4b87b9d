// What the terminal says of a broker that does not run.
#include "terminal/services/BrokerProblem.h"

#include "endpoint/BusAddress.h"
#include "endpoint/LocalBroker.h"
#include "terminal/ui/InterfaceLanguage.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace Terminal {
namespace {

using LocalCommunication::BusAddress;
using LocalCommunication::LocalBroker;

class BrokerProblemTest : public ::testing::Test
{
protected:
    BrokerProblemTest() { m_language.set(QStringLiteral("zh")); }
    ~BrokerProblemTest() override { m_language.set(QStringLiteral("en")); }

    QString program() const { return m_folder.filePath(QStringLiteral("program")); }

    /// Of a broker on the bus of a folder.
    static QString problemOf(const QString &directory, const QString &broker = {})
    {
        LocalBroker local;
        if (!broker.isEmpty()) {
            local.setProgram(broker);
        }
        local.start(directory);
        EXPECT_TRUE(waitUntil([&local] { return local.state() == LocalBroker::State::Failed; }));
        return brokerProblemText(local.problem());
    }

    InterfaceLanguage m_language;
    QTemporaryDir m_folder;
};

TEST_F(BrokerProblemTest, IsToldInTheLanguageOfTheWindowWhenTheProgramIsMissing)
{
    const QString problem = problemOf(m_folder.path(), QStringLiteral("/nowhere/broker"));
    EXPECT_TRUE(problem.startsWith(QStringLiteral(u"无法启动消息代理 /nowhere/broker：")))
        << qPrintable(problem);
}

TEST_F(BrokerProblemTest, IsToldOfADirectoryThatOthersMayEnter)
{
    const QString bus = QFileInfo(BusAddress::ofDirectory(m_folder.path()).socketPath).path();
    ASSERT_TRUE(QDir().mkpath(bus));
    ASSERT_TRUE(QFile::setPermissions(bus, QFile::Permissions(0x7777)));
    EXPECT_EQ(problemOf(m_folder.path()),
              QStringLiteral(u"总线目录 %1 对其他用户开放；请运行：chmod 700 '%1'").arg(bus));
    QDir(bus).removeRecursively();
}

TEST_F(BrokerProblemTest, IsToldOfAnAddressThatIsNone)
{
    EXPECT_EQ(problemOf(QStringLiteral("/nowhere")),
              QStringLiteral(u"总线地址 /nowhere 不是目录；它应是终端程序所在的目录"));
}

TEST_F(BrokerProblemTest, IsShownAsItIsWhereItIsNotKnown)
{
    EXPECT_EQ(brokerProblemText(QStringLiteral("the moon is full")), QStringLiteral("The moon is full"));
}

TEST_F(BrokerProblemTest, HasItsSecondPartInItsPlace)
{
    EXPECT_EQ(brokerProblemText(QStringLiteral("the lock file '/a/b' cannot be used: full; remove it")),
              QStringLiteral(u"锁文件 /a/b 无法使用：full；请将其删除"));
}

} // namespace
} // namespace Terminal
