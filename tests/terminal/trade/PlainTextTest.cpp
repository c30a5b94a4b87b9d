#include "terminal/trade/PlainText.h"

#include <gtest/gtest.h>

#include <QTextDocument>

namespace Terminal {
namespace {

TEST(PlainText, LeavesWritingAsItIs)
{
    const QString text = QStringLiteral(u"贵州茅台 A&B <b> 100.00 · –");
    EXPECT_EQ(plainText(text), text);
}

TEST(PlainText, HasAPlaceholderForWhatIsNotSeenOrMovesOtherText)
{
    const QString nasty = QStringLiteral(u"\n\r\t\u0007\u001b\u2028\u2029\u202e\u200b\u0085");
    EXPECT_EQ(plainText(nasty), QString(nasty.size(), QChar(QChar::ReplacementCharacter)));
}

TEST(PlainText, StaysInATipAsItIs)
{
    const QString text = QStringLiteral("1 < 2 & so on\nsecond line");
    EXPECT_EQ(plainTip(text), text);
}

TEST(PlainText, IsNoMarkupInATip)
{
    const QString text = QStringLiteral("<b>100 shares</b><!-- of 20000");
    QTextDocument shown;

    shown.setHtml(plainTip(text));

    EXPECT_EQ(shown.toPlainText(), text);
}

} // namespace
} // namespace Terminal
