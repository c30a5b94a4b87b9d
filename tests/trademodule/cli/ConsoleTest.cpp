#include "trademodule/cli/Console.h"

#include <gtest/gtest.h>

namespace TradeModule {

TEST(ConsoleWidth, IsTwoForWideCharacters)
{
    for (const auto &[text, width] : {std::pair(u"", 0),
                                      {u"abc", 3},
                                      {u"委托", 4},
                                      {u"（元）", 6},
                                      {u"　", 2},
                                      {u"ＡＢ", 4},
                                      {u"ABﾊﾊ", 4},
                                      {u"“×…", 3},
                                      {u"é", 1},
                                      {u"万科A", 5},
                                      {u"*ST国华", 7},
                                      {u"한", 2},
                                      {u"𠀀", 2}}) {
        EXPECT_EQ(screenWidth(QString::fromUtf16(text)), width) << QString::fromUtf16(text).toStdString();
    }
}

TEST(ConsoleTable, AlignsColumnsOfMixedWidth)
{
    const QVector<QStringList> lines{
        {QStringLiteral(u"证券名称"), QStringLiteral(u"数量"), QStringLiteral("x")},
        {QStringLiteral(u"万科A"), QStringLiteral("12345"), QStringLiteral("1")},
        {QString(), QStringLiteral("7"), QStringLiteral("2")},
        {QStringLiteral("ABCDEFGHIJ"), QString(), QStringLiteral("3")}};
    QString table;
    for (const QStringList &line : lines) {
        table += alignedLine(line, columnWidths(lines));
    }

    EXPECT_EQ(table.toStdString(), "证券名称    数量   x\n"
                                   "万科A       12345  1\n"
                                   "            7      2\n"
                                   "ABCDEFGHIJ         3\n");
}

TEST(ConsoleTable, HasNothingThatATerminalWouldObey)
{
    const QVector<QStringList> lines{
        {QStringLiteral("\x1b[31ma\x07\n\u009b2J\u202eb\tc\r"), QStringLiteral("d")}};

    EXPECT_EQ(alignedLine(lines[0], columnWidths(lines)).toStdString(), "�[31ma���2J�b c�  d\n");
}

} // namespace TradeModule
