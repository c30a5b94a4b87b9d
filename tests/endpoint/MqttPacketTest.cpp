#include "endpoint/MqttPacket_p.h"

#include <gmock/gmock.h>

#include <random>
#include <string_view>

namespace LocalCommunication {

using ::testing::ElementsAre;

namespace {

using MqttPacket::Found;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

/// What a receiver makes of a message, whose head may be as long as its length wants.
BusMessage readBack(const BusMessage &message)
{
    const QByteArray packet = MqttPacket::publish(message, 0);
    const Found found = MqttPacket::firstIn(viewOf(packet));
    EXPECT_EQ(found.state, Found::State::Whole);
    EXPECT_EQ(found.size, static_cast<std::size_t>(packet.size()));
    EXPECT_EQ(found.packet.kind, static_cast<int>(MqttPacket::Kind::Message));
    return MqttPacket::messageIn(found.packet.body).value_or(BusMessage());
}

} // namespace

TEST(MqttPacket, GreetsWithNameOnly)
{
    EXPECT_EQ(MqttPacket::connect("id", {}, {}, std::nullopt).toHex(), "100f00044d51545405020000000002"
                                                                       "6964");
}

TEST(MqttPacket, GreetsWithNamePasswordAndWill)
{
    const BusMessage will{"a", "b", {}, {}, true};
    EXPECT_EQ(MqttPacket::connect("i", "n", "p", will).toHex(), "101b00044d51545405ee0000000001"
                                                                "69"
                                                                "00000161"
                                                                "000162"
                                                                "00016e"
                                                                "000170");
}

TEST(MqttPacket, RefusesAGreetingThatNoLengthCanSay)
{
    EXPECT_TRUE(MqttPacket::connect("id", QByteArray(65536, 'n'), {}, std::nullopt).isEmpty());
    EXPECT_FALSE(MqttPacket::connect("id", QByteArray(65535, 'n'), {}, std::nullopt).isEmpty());
}

TEST(MqttPacket, SubscribesToAllPathsAtOnceAndToNothingOfItsOwn)
{
    EXPECT_EQ(MqttPacket::subscribe(258, {"a", "bc"}).toHex(), "820c"
                                                               "0102"
                                                               "00"
                                                               "00016104"
                                                               "0002626304");
}

TEST(MqttPacket, CarriesMessagesOfEveryLength)
{
    for (const int size : {0, 1, 100, 127, 128, 200, 16383, 16384, 2097151, 2097152}) {
        const BusMessage message{"c/t", QByteArray(size, 'p'), "reply", "17"};
        const BusMessage back = readBack(message);
        EXPECT_EQ(back.path, message.path) << size;
        EXPECT_EQ(back.payload, message.payload) << size;
        EXPECT_EQ(back.responsePath, message.responsePath) << size;
        EXPECT_EQ(back.correlation, message.correlation) << size;
    }
}

TEST(MqttPacket, CarriesAMessageWithoutAQuestion)
{
    const BusMessage back = readBack({"c/t", "p", {}, {}});
    EXPECT_TRUE(back.responsePath.isEmpty());
    EXPECT_TRUE(back.correlation.isEmpty());
}

TEST(MqttPacket, NumbersAMessageThatIsToBeKept)
{
    EXPECT_EQ(MqttPacket::publish({"a", "b", {}, {}, true}, 258).toHex(), "3307"
                                                                          "000161"
                                                                          "0102"
                                                                          "00"
                                                                          "62");
}

TEST(MqttPacket, IsFoundOnlyWhenItIsWhole)
{
    const QByteArray packet = MqttPacket::publish({"c/t", QByteArray(200, 'p'), {}, {}}, 0);
    for (int size = 0; size < packet.size(); ++size) {
        EXPECT_EQ(MqttPacket::firstIn(viewOf(packet.left(size))).state, Found::State::Begun) << size;
    }
    const QByteArray two = packet + packet;
    EXPECT_EQ(MqttPacket::firstIn(viewOf(two)).size, static_cast<std::size_t>(packet.size()));
}

TEST(MqttPacket, IsBrokenWithALengthOfFiveBytes)
{
    EXPECT_EQ(MqttPacket::firstIn(viewOf(bytes("30ffffffff01"))).state, Found::State::Broken);
}

TEST(MqttPacket, SaysHowTheBrokerGreets)
{
    const auto greeting = MqttPacket::greetingIn(viewOf(bytes("0000"
                                                              "0e"
                                                              "22000a"
                                                              "13ffff"
                                                              "2700100000"
                                                              "2500"
                                                              "")));
    ASSERT_FALSE(greeting); // shorter than its properties say
    const auto whole = MqttPacket::greetingIn(viewOf(bytes("0000"
                                                           "0d"
                                                           "22000a"
                                                           "13ffff"
                                                           "2700100000"
                                                           "2500")));
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->reason, 0);
    EXPECT_FALSE(whole->keepsMessages);
    EXPECT_EQ(whole->largestPacket, 0x100000U);
}

TEST(MqttPacket, SaysWhyTheBrokerRefuses)
{
    EXPECT_EQ(MqttPacket::greetingIn(viewOf(bytes("008700")))->reason, 0x87);
    EXPECT_EQ(MqttPacket::greetingIn(viewOf(bytes("0001")))->reason, 1); // as a broker of an older version
}

TEST(MqttPacket, PassesOverWhatThisClientDoesNotAskFor)
{
    // a time to live, a type, a text of the sender's own, the correlation, a form, a number
    const QByteArray body = bytes("000161"
                                  "18"
                                  "0200000001"
                                  "03000178"
                                  "26000161000162"
                                  "09000137"
                                  "0101"
                                  "0b7f") +
                            "p";
    const auto read = MqttPacket::messageIn(viewOf(body));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->correlation, "7");
    EXPECT_EQ(read->payload, "p");
}

TEST(MqttPacket, IsNoneWithAPropertyThatNobodyKnows)
{
    EXPECT_FALSE(MqttPacket::messageIn(viewOf(bytes("000161"
                                                    "02"
                                                    "7f00"))));
}

TEST(MqttPacket, SaysWhatIsGrantedAndWhatIsKept)
{
    const auto granted = MqttPacket::grantedIn(viewOf(bytes("0102"
                                                            "00"
                                                            "0087")));
    ASSERT_TRUE(granted);
    EXPECT_EQ(granted->number, 258);
    EXPECT_THAT(granted->reasons, ElementsAre(0, 0x87));
    EXPECT_EQ(MqttPacket::receiptIn(viewOf(bytes("0102")))->reason, 0);
    EXPECT_EQ(MqttPacket::receiptIn(viewOf(bytes("010297")))->reason, 0x97);
    EXPECT_FALSE(MqttPacket::receiptIn(viewOf(bytes("01"))));
}

TEST(MqttPacket, ReadsNothingBeyondWhatCame)
{
    const QByteArray packet = MqttPacket::publish({"c/t", "payload", "reply", "17"}, 0).mid(2);
    for (int size = 0; size < packet.size(); ++size) {
        const QByteArray cut = packet.left(size);
        MqttPacket::messageIn(viewOf(cut)); // the sanitizers watch
        MqttPacket::greetingIn(viewOf(cut));
        MqttPacket::grantedIn(viewOf(cut));
        MqttPacket::receiptIn(viewOf(cut));
    }
}

TEST(MqttPacket, SurvivesWhateverIsChangedInIt)
{
    const QByteArray packet = MqttPacket::publish({"c/t", "payload", "reply", "17"}, 0);
    std::mt19937 chance(1); // the same bytes in every run
    for (int i = 0; i < 100000; ++i) {
        QByteArray changed = packet;
        for (int k = 0; k < 3; ++k) {
            changed[static_cast<int>(chance() % static_cast<unsigned>(changed.size()))] =
                static_cast<char>(chance());
        }
        const Found found = MqttPacket::firstIn(viewOf(changed));
        if (found.state == Found::State::Whole) {
            ASSERT_LE(found.size, static_cast<std::size_t>(changed.size()));
            MqttPacket::messageIn(found.packet.body); // the sanitizers watch these
            MqttPacket::greetingIn(found.packet.body);
            MqttPacket::grantedIn(found.packet.body);
            MqttPacket::receiptIn(found.packet.body);
        }
    }
}

} // namespace LocalCommunication
