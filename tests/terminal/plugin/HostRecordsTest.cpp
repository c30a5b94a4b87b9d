// Bars and securities as overlays read them.
#include "terminal/plugin/HostRecords.h"

#include <gmock/gmock.h>

#include <string>

namespace Terminal {
namespace {

TEST(HostRecords, CarryADayAsItsDate)
{
    EXPECT_EQ(packedTime({20240102, 0, 1, 1, 1, 1, 1}), 20240102U);
}

TEST(HostRecords, PackAMinuteIntoYearMonthDayAndMinutes)
{
    const std::uint32_t time = packedTime({20240102, 571, 1, 1, 1, 1, 1});
    EXPECT_EQ(time >> 27U, 20U);
    EXPECT_EQ((time >> 16U) & 0x7FFU, 102U);
    EXPECT_EQ(time & 0xFFFFU, 571U);
}

TEST(HostRecords, CutALongNameBetweenTwoCharacters)
{
    const Security security{QStringLiteral("600519"), Market::Shanghai, QString(20, QChar(u'茅'))};
    const Korvane::tagCodeWithName record = hostSecurity(security, 7);
    EXPECT_EQ(QString::fromUtf8(record.name), QString(10, QChar(u'茅')));
    EXPECT_STREQ(record.code, "600519");
    EXPECT_EQ(record.market, 1);
    EXPECT_EQ(record.identity, 7);
}

TEST(HostRecords, KeepANameThatJustFits)
{
    const Security security{QStringLiteral("1"), Market::Shenzhen, QString(31, QLatin1Char('x'))};
    EXPECT_EQ(std::string(hostSecurity(security, 1).name), std::string(31, 'x'));
}

TEST(HostRecords, GiveEverySecurityItsOwnIdentity)
{
    const Security one{QStringLiteral("000001"), Market::Shanghai, QStringLiteral("a")};
    const Security other{QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("a")};
    EXPECT_EQ(securityIdentity(one), securityIdentity(one));
    EXPECT_NE(securityIdentity(one), securityIdentity(other));
}

} // namespace
} // namespace Terminal
