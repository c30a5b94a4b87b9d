#include "endpoint/HostLookup_p.h"

#include "tests/support/HangingNames.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHostAddress>

#include <memory>

namespace LocalCommunication {
namespace {

using namespace std::chrono_literals;

class HostLookupTest : public ::testing::Test
{
protected:
    HostLookupTest()
    {
        QObject::connect(lookup.get(), &HostLookup::found, lookup.get(),
                         [this](const QString &host) { found = host; });
        QObject::connect(lookup.get(), &HostLookup::failed, lookup.get(),
                         [this](const QString &reason) { failed = reason; });
    }

    bool isOver() const
    {
        return waitUntil([this] { return !found.isEmpty() || !failed.isEmpty(); });
    }

    std::unique_ptr<HostLookup> lookup = std::make_unique<HostLookup>(nullptr, 100ms);
    QString found;
    QString failed;
};

} // namespace

TEST_F(HostLookupTest, FindsAnAddress)
{
    lookup->start(QStringLiteral("localhost"), HostLookup::Gives::Address);

    ASSERT_TRUE(isOver());
    EXPECT_TRUE(QHostAddress(found).isLoopback()) << qPrintable(found + failed);
}

TEST_F(HostLookupTest, KeepsTheNameWhereItIsLookedForInACertificate)
{
    lookup->start(QStringLiteral("localhost"), HostLookup::Gives::Name);

    ASSERT_TRUE(isOver());
    EXPECT_EQ(found, QStringLiteral("localhost")) << qPrintable(failed);
}

TEST_F(HostLookupTest, GivesANameServerUpThatDoesNotAnswer)
{
    const HangingNames hanging;

    lookup->start(QLatin1String(HangingNames::host), HostLookup::Gives::Address);

    ASSERT_TRUE(isOver());
    EXPECT_EQ(failed, QStringLiteral("the name server does not answer"));
}

TEST_F(HostLookupTest, WaitsForNobodyWhenItEnds)
{
    const HangingNames hanging;
    lookup->start(QLatin1String(HangingNames::host), HostLookup::Gives::Address);
    ASSERT_TRUE(waitUntil([] { return HangingNames::questions() == 1; }));
    QElapsedTimer clock;
    clock.start();

    lookup.reset();

    EXPECT_LT(clock.elapsed(), 1000);
}

} // namespace LocalCommunication
