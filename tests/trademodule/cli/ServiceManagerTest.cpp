// What the machine's service manager hears of a serving module.
#include "trademodule/cli/ServiceManager.h"
#include "tests/trademodule/support/ProgramFixture.h"

#include <QFile>

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace TradeModule {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// In the manager's place: a socket that takes what services say.
class ServiceManagerTest : public ProgramOnABus
{
protected:
    ServiceManagerTest()
    {
        m_path = QFile::encodeName(m_folder.filePath(QStringLiteral("notify")));
        m_socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(m_path.begin(), m_path.end(), address.sun_path);
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
        qputenv("NOTIFY_SOCKET", m_path);
    }
    ~ServiceManagerTest() override
    {
        qunsetenv("NOTIFY_SOCKET");
        ::close(m_socket);
    }

    /// All that was said so far.
    const std::vector<std::string> &heard()
    {
        char text[4096];
        for (ssize_t size = 0; (size = ::recv(m_socket, text, sizeof(text), MSG_DONTWAIT)) > 0;) {
            m_heard.emplace_back(text, static_cast<std::size_t>(size));
        }
        return m_heard;
    }
    bool hears(const std::string &beginning)
    {
        return waitUntil([&] { return ::testing::Value(heard(), Contains(StartsWith(beginning))); },
                         std::chrono::seconds(30));
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_path;
    int m_socket = -1;
    std::vector<std::string> m_heard;
};

TEST_F(ServiceManagerTest, HearsThatAModuleServesLivesAndEnds)
{
    serve();
    EXPECT_TRUE(hears("READY=1\nSTATUS=serving the ledger "));
    EXPECT_TRUE(hears("WATCHDOG=1"));
    module().terminate();
    EXPECT_TRUE(module().waitForFinished(60000));
    EXPECT_TRUE(hears("STOPPING=1"));
}

TEST_F(ServiceManagerTest, HearsThatOneWhichStandsByIsUpAndLives)
{
    serve();
    ASSERT_TRUE(hears("READY=1"));
    const auto second = start(busOptions() + ledgerOptions() +
                              QStringList{QStringLiteral("serve"), QStringLiteral("--standby")});
    EXPECT_TRUE(hears("READY=1\nSTATUS=standing by, "));
    second->terminate();
    EXPECT_TRUE(second->waitForFinished(60000));
}

TEST_F(ServiceManagerTest, IsToldInOneLine)
{
    ServiceManager().tellReady(QStringLiteral("one\ntwo"));
    EXPECT_THAT(heard(), ::testing::ElementsAre("READY=1\nSTATUS=one two"));
}

TEST_F(ServiceManagerTest, MayBeAbsentOrHaveAnImpossibleAddress)
{
    for (const QByteArray &address : {QByteArray(), QByteArray("/"), QByteArray(300, 'x')}) {
        qputenv("NOTIFY_SOCKET", address);
        ServiceManager().tellAlive();
    }
    EXPECT_THAT(heard(), ::testing::IsEmpty());
}

} // namespace
} // namespace TradeModule
