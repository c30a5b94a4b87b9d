// Who is let in, and whom a client trusts.

#include "tests/endpoint/TlsTest.h"

namespace {

using TlsTrust = Tls;

} // namespace

TEST_F(TlsTrust, LetsNobodyInWithAWrongPassword)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(
        address(QStringLiteral("127.0.0.1"), QStringLiteral("wrong-password"), certificates->path("ca.pem")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("the broker refuses this client")); }))
        << qPrintable(log.text());
    EXPECT_FALSE(endPoint.isConnected());
    EXPECT_EQ(log.lines().size(), 1) << qPrintable(log.text());
    EXPECT_FALSE(log.has(QStringLiteral("guess")));
}

TEST_F(TlsTrust, TrustsNoBrokerOfAnotherAuthority)
{
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(
        address(QStringLiteral("127.0.0.1"), QStringLiteral("password"), certificates->path("other.pem")));

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }));
    EXPECT_EQ(endPoint.readyCount, 0);
    EXPECT_FALSE(endPoint.isConnected());
    EXPECT_TRUE(log.has(QStringLiteral("certificate verify failed"))) << qPrintable(log.text());
    EXPECT_TRUE(log.has(QStringLiteral("ca_file"))) << qPrintable(log.text());
}

TEST_F(TlsTrust, TrustsNoCertificateThatIsOutOfDate)
{
    broker.kill();
    serve("expired.pem");
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress());

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("out of date")); })) << qPrintable(log.text());
    EXPECT_FALSE(endPoint.isConnected());
}

TEST_F(TlsTrust, TrustsNoCertificateOfAnotherHost)
{
    broker.kill();
    serve("elsewhere.pem");
    const LogCapture log;
    RecordingEndPoint endPoint;
    endPoint.connect(goodAddress());

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }));
    EXPECT_FALSE(endPoint.isConnected());
    EXPECT_TRUE(log.has(QStringLiteral("certificate"))) << qPrintable(log.text());
}
