#include "trading/PrintableText.h"

#include <gtest/gtest.h>

namespace Trading {

TEST(PrintableText, LeavesWritingAsItIs)
{
    const QString text = QStringLiteral(u"贵州茅台 100.00 <b>");
    EXPECT_EQ(printable(text), text);
}

TEST(PrintableText, HasNothingThatATerminalObeys)
{
    EXPECT_EQ(printable(QStringLiteral(u"a\u001b[31mb\u0007c\td\ne\u202ef")),
              QStringLiteral(u"a\ufffd[31mb\ufffdc d\ufffde\ufffdf"));
}

TEST(PrintableText, KeepsTheLinesOfAText)
{
    EXPECT_EQ(printableLines(QStringLiteral(u"one\ntwo\u001b\n")), QStringLiteral(u"one\ntwo\ufffd\n"));
}

} // namespace Trading
