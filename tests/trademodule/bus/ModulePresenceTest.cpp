// What a serving program says of itself on a real bus.
#include "trademodule/bus/ModulePresence.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/ServingTable.h"
#include "trading/ModuleVocabulary.h"

#include <csignal>

namespace TradeModule {

namespace {

using Trading::TradePresence;

class ModulePresenceTest : public ProgramOnABus
{
protected:
    bool listen() { return chart().listen("Global", "TradePresence"); }

    /// The word that was heard last, when it is what `isIt` wants.
    std::optional<TradePresence> heard(const std::function<bool(const TradePresence &)> &isIt)
    {
        std::optional<TradePresence> last;
        waitUntil([&] {
            last = chart().messages.isEmpty() ? std::nullopt
                                              : TradePresence::ofJson(chart().messages.constLast().payload);
            return last && isIt(*last);
        });
        return last && isIt(*last) ? last : std::nullopt;
    }
    std::optional<TradePresence> heardOnline()
    {
        return heard([](const TradePresence &presence) { return presence.isOnline; });
    }
    std::optional<TradePresence> heardOffline()
    {
        return heard([](const TradePresence &presence) { return !presence.isOnline; });
    }

    static TradePresence other(bool isOnline, qint64 fence)
    {
        TradePresence presence;
        presence.instance = QStringLiteral("another");
        presence.isOnline = isOnline;
        presence.fence = fence;
        return presence;
    }
};

} // namespace

TEST_F(ModulePresenceTest, IsToldToWhoListensLater)
{
    serve();
    ASSERT_TRUE(listen());

    const auto presence = heardOnline();

    ASSERT_TRUE(presence);
    const LedgerServer server = ServingTable(ledger().database()).server();
    EXPECT_FALSE(presence->version.isEmpty());
    EXPECT_EQ(presence->protocol, QStringLiteral("1"));
    EXPECT_TRUE(presence->knows(Trading::Capability::CLIENTNO));
    EXPECT_EQ(presence->host, server.process.host);
    EXPECT_EQ(presence->process, module().processId());
    EXPECT_EQ(presence->since.toString(Qt::ISODate), server.since);
    EXPECT_EQ(presence->fence, server.fence);
    EXPECT_FALSE(presence->isReadOnly);
    EXPECT_TRUE(location().endsWith(presence->ledger.right(10)));
}

TEST_F(ModulePresenceTest, EndsWithTheModule)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);

    module().terminate();

    const auto farewell = heardOffline();
    ASSERT_TRUE(farewell);
    EXPECT_EQ(farewell->toJson(), presence->ended().toJson());
    module().waitForFinished();
}

TEST_F(ModulePresenceTest, EndsWithAModuleThatIsKilled)
{
    serve();
    ASSERT_TRUE(listen());
    ASSERT_TRUE(heardOnline());

    module().kill();

    EXPECT_TRUE(heardOffline());
    module().waitForFinished();
    serve(); // for the end of the test
}

TEST_F(ModulePresenceTest, IsSaidAgainWhenALateWordHidesIt)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);
    for (const TradePresence &late : {other(false, presence->fence), other(true, presence->fence - 1)}) {
        chart().messages.clear();

        chart().sendMessage("Global", "TradePresence", late.toJson());

        const auto again = heardOnline();
        ASSERT_TRUE(again);
        EXPECT_EQ(again->instance, presence->instance);
    }
}

TEST_F(ModulePresenceTest, IsNotSaidAgainstASuccessor)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);
    chart().messages.clear();

    chart().sendMessage("Global", "TradePresence", other(true, presence->fence + 1).toJson());
    ask("{\"cmd\":\"?\"}"); // handled after it

    EXPECT_TRUE(chart().messages.isEmpty());
}

} // namespace TradeModule
