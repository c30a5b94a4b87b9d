#include "trading/Presence.h"

#include "trading/ModuleVocabulary.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace Trading {

namespace {

TradePresence online(const char *instance, qint64 fence)
{
    TradePresence presence;
    presence.instance = QLatin1String(instance);
    presence.isOnline = true;
    presence.fence = fence;
    return presence;
}

TradePresence offline(const char *instance, qint64 fence)
{
    return online(instance, fence).ended();
}

TradePresence completePresence()
{
    TradePresence presence = online("one", 7);
    presence.version = QStringLiteral("0.1.0");
    presence.protocol = QStringLiteral("1");
    presence.can = QStringList{QStringLiteral("clientno"), QStringLiteral("more")};
    presence.host = QStringLiteral("desk");
    presence.process = 1234;
    presence.processStart = QStringLiteral("boot/5120");
    presence.since = QDateTime(QDate(2026, 11, 22), QTime(9, 30), Qt::UTC);
    presence.ledger = QStringLiteral("/home/me/account.db");
    return presence;
}

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

TEST(Presence, SaysWhoServesAndWhatItCanDo)
{
    EXPECT_EQ(json(completePresence().toJson()), json(R"({"instance":"one","online":true,"version":"0.1.0",
        "protocol":"1","can":["clientno","more"],"host":"desk","process":1234,"processstart":"boot/5120",
        "since":"2026-11-22T09:30:00Z",
        "fence":7,"readonly":false,"ledger":"/home/me/account.db"})"));
}

TEST(Presence, SaysOfOneThatEndedWhichItWas)
{
    EXPECT_EQ(json(completePresence().ended().toJson()),
              json(R"({"instance":"one","online":false,"fence":7})"));
}

TEST(Presence, IsReadAsItWasSaid)
{
    const TradePresence said = completePresence();

    const std::optional<TradePresence> read = TradePresence::ofJson(said.toJson());

    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->toJson(), said.toJson());
    EXPECT_EQ(read->since, said.since);
    EXPECT_TRUE(read->knows(Capability::CLIENTNO));
    EXPECT_FALSE(read->knows("less"));
    EXPECT_FALSE(read->isReadOnly);
}

TEST(Presence, TellsOfAModuleThatOnlyReads)
{
    const auto read = TradePresence::ofJson(R"({"instance":"one","online":true,"readonly":true})");

    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(read->isReadOnly);
}

TEST(Presence, IsNotReadFromWhatDoesNotSayWhoIsThere)
{
    for (const char *const payload : {"", "[]", "7", "{", "{}", R"({"online":true})", R"({"instance":"one"})",
                                      R"({"instance":"","online":true})", R"({"instance":1,"online":true})",
                                      R"({"instance":"one","online":"true"})"}) {
        EXPECT_FALSE(TradePresence::ofJson(payload).has_value()) << payload;
    }
}

TEST(Presence, PassesOverWhatItDoesNotKnowAndWhatIsOfAnotherKind)
{
    const auto read = TradePresence::ofJson(R"({"instance":"one","online":true,"version":1,"protocol":null,
        "can":["a",1,null,"b"],"host":{},"process":"12","processstart":5,"since":"yesterday","fence":"7","readonly":"yes",
        "ledger":[],"new":true})");

    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->version, QString());
    EXPECT_EQ(read->protocol, QString());
    EXPECT_EQ(read->can, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(read->host, QString());
    EXPECT_EQ(read->process, 0);
    EXPECT_EQ(read->processStart, QString());
    EXPECT_FALSE(read->since.isValid());
    EXPECT_EQ(read->fence, 0);
    EXPECT_FALSE(read->isReadOnly);
    EXPECT_EQ(read->ledger, QString());
}

TEST(Presence, TakesNumbersThatNoFenceCanBeForNone)
{
    for (const char *const fence : {"-1", "1e300", "-1e300"}) {
        const auto read =
            TradePresence::ofJson(R"({"instance":"one","online":true,"fence":)" + QByteArray(fence) + "}");
        ASSERT_TRUE(read.has_value()) << fence;
        EXPECT_EQ(read->fence, 0) << fence;
    }
}

TEST(Presence, IsTakenWhenNothingIsKnown)
{
    EXPECT_TRUE(replaces(online("one", 1), std::nullopt));
    EXPECT_TRUE(replaces(offline("one", 1), std::nullopt));
}

TEST(Presence, OfASuccessorTakesThePlaceOfTheKnownOne)
{
    EXPECT_TRUE(replaces(online("two", 8), online("one", 7)));
    EXPECT_TRUE(replaces(online("two", 8), offline("one", 7)));
    EXPECT_TRUE(replaces(online("two", 7), offline("one", 7)));
}

TEST(Presence, OfAPredecessorIsPassedOver)
{
    EXPECT_FALSE(replaces(online("one", 7), online("two", 8)));
    EXPECT_FALSE(replaces(offline("one", 7), online("two", 8)));
}

TEST(Presence, OfAnotherLedgerIsTakenWhateverItsFence)
{
    TradePresence other = online("other", 1);
    other.ledger = QStringLiteral("/home/me/other.db");

    EXPECT_TRUE(replaces(other, completePresence()));
    EXPECT_TRUE(replaces(other, offline("one", 7))) << "the farewell does not say which ledger it was";
}

TEST(Presence, EndsWithTheWordOfTheKnownOneOnly)
{
    EXPECT_TRUE(replaces(offline("one", 7), online("one", 7)));
    EXPECT_FALSE(replaces(offline("other", 7), online("one", 7)));
    EXPECT_FALSE(replaces(offline("other", 9), online("one", 7)));
}

TEST(Presence, TellsOfAnotherLedgerOnTheBus)
{
    const TradePresence own = completePresence();
    TradePresence successor = completePresence();
    successor.instance = QStringLiteral("two");
    TradePresence other = successor;
    other.ledger = QStringLiteral("/home/me/other.db");

    EXPECT_TRUE(isOfAnotherLedger(own, other));
    EXPECT_FALSE(isOfAnotherLedger(own, own));
    EXPECT_FALSE(isOfAnotherLedger(own, successor));
    EXPECT_FALSE(isOfAnotherLedger(own, other.ended()));
    EXPECT_FALSE(isOfAnotherLedger(own, online("one that does not say", 3)));
}

TEST(Presence, TellsTheSameFileNameOnAnotherHostFromThisOne)
{
    TradePresence elsewhere = completePresence();
    elsewhere.instance = QStringLiteral("two");
    elsewhere.host = QStringLiteral("another desk");
    EXPECT_TRUE(isOfAnotherLedger(completePresence(), elsewhere));

    TradePresence own = completePresence();
    own.ledger = elsewhere.ledger = QStringLiteral("postgresql://trader@database/account");
    EXPECT_FALSE(isOfAnotherLedger(own, elsewhere)) << "one server, whoever asks it";
}

TEST(Presence, IsSaidAgainWhenALateWordHidesIt)
{
    const TradePresence own = online("two", 8);

    EXPECT_TRUE(isHiddenBy(own, offline("one", 7)));
    EXPECT_TRUE(isHiddenBy(own, offline("one", 8)));
    EXPECT_TRUE(isHiddenBy(own, offline("two", 8)));
    EXPECT_TRUE(isHiddenBy(own, online("one", 7)));
}

TEST(Presence, IsNotSaidAgainAfterItsOwnWordOrASuccessors)
{
    const TradePresence own = online("two", 8);

    EXPECT_FALSE(isHiddenBy(own, own));
    EXPECT_FALSE(isHiddenBy(own, online("three", 9)));
    EXPECT_FALSE(isHiddenBy(own, offline("three", 9)));
}

TEST(Presence, IsSaidAgainByOnlyOneOfTwoWithTheSameFence)
{
    EXPECT_NE(isHiddenBy(online("one", 3), online("two", 3)), isHiddenBy(online("two", 3), online("one", 3)));
}

} // namespace Trading
