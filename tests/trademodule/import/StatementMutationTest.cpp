// One true statement, written in many ways: each gives the same books or is refused by name.
#include "tests/support/ByName.h"
#include "tests/trademodule/import/StatementTest.h"
#include "trademodule/Error.h"
#include "trademodule/import/ColumnNames.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <random>

namespace TradeModule {

namespace {

/// A statement as a broker's client lays it out.
struct Written
{
    QStringList header;
    QVector<QStringList> rows;
    QString separator = QStringLiteral(",");
    QString lineEnd = QStringLiteral("\n");
    QByteArray encoding = "UTF-8";
    bool hasMark = false;                            ///< a byte order mark
    bool isPadded = false;                           ///< cells are as wide as their column
    bool isMarkup = false;                           ///< a page with a table
    bool hasLastEnd = true;                          ///< the last line ends, too
    QStringList before;                              ///< lines above the header
    QStringList after;                               ///< lines under the last row
    std::function<QString(const QString &)> wrapped; ///< around each cell
};

const char *const trueHeader =
    "成交日期,成交时间,证券代码,证券名称,业务名称,成交数量,成交价格,成交金额,手续费,印花税,"
    "过户费,发生金额,股份余额,资金余额,合同编号,成交编号,股东代码,币种";

const char *const trueRows[] = {
    "20240102,09:05:00,,,银行转存,0,0,0,0,0,0,500000.00,0,500000.00,9,101,,人民币",
    "20240103,09:35:12,600519,贵州茅台,证券买入,100,1700.00,170000.00,42.50,0.00,1.70,-170044.20,100,329955."
    "80,11,111,"
    "A123456789,人民币",
    "20240103,10:15:40,000001,平安银行,证券买入,2000,9.30,18600.00,5.00,0.00,0.19,-18605.19,2000,311350.61,"
    "12,112,"
    "0123456789,人民币",
    "20240103,14:20:05,000001,平安银行,证券卖出,500,9.40,4700.00,5.00,2.35,0.05,4692.60,1500,316043.21,13,"
    "113,"
    "0123456789,人民币",
    "20240104,13:02:33,510300,沪深300ETF,证券买入,10000,3.412,34120.00,8.53,0.00,0.00,-34128.53,10000,281914."
    "68,14,114,"
    "A123456789,人民币",
    "20240105,09:31:00,688981,中芯国际,证券买入,200,52.31,10462.00,5.00,0.00,0.10,-10467.10,200,271447.58,15,"
    "115,"
    "A123456789,人民币",
    "20240108,15:00:00,000001,平安银行,红股入账,300,0,0,0,0,0,0.00,1800,271447.58,0,116,0123456789,人民币",
    "20240108,15:00:01,000001,平安银行,股息入账,0,0,0,0,0,0,360.00,1800,271807.58,0,117,0123456789,人民币",
    "20240109,10:00:00,123045,雷迪转债,证券买入,20,118.500,2370.00,0.50,0.00,0.00,-2370.50,20,269437.08,16,"
    "118,"
    "0123456789,人民币",
    "20240110,11:29:59,600519,贵州茅台,证券卖出,100,1745.50,174550.00,43.64,87.28,1.75,174417.33,0,443854.41,"
    "17,119,"
    "A123456789,人民币",
    "20240111,14:59:00,510300,沪深300ETF,证券卖出,4000,3.498,13992.00,5.00,0.00,0.00,13987.00,6000,457841.41,"
    "18,120,"
    "A123456789,人民币",
    "20240112,15:10:00,000001,平安银行,股息红利税补缴,0,0,0,0,0,0,-12.00,1800,457829.41,0,121,0123456789,"
    "人民币",
    "20240115,16:00:00,,,银行转取,0,0,0,0,0,0,-57829.41,0,400000.00,19,122,,人民币",
};

Written asWritten()
{
    Written layout;
    layout.header = QString::fromUtf8(trueHeader).split(QLatin1Char(','));
    for (const char *const row : trueRows) {
        layout.rows.append(QString::fromUtf8(row).split(QLatin1Char(',')));
    }
    return layout;
}

int columnOf(const Written &layout, const char *name)
{
    return layout.header.indexOf(QString::fromUtf8(name));
}

/// Changes every cell of a column that is there.
void changeCells(Written *layout, const char *column, const std::function<QString(const QString &)> &change)
{
    const int i = columnOf(*layout, column);
    for (QStringList &row : layout->rows) {
        if (i >= 0 && !row[i].isEmpty()) {
            row[i] = change(row[i]);
        }
    }
}

void rename(Written *layout, const char *column, const QString &name)
{
    const int i = columnOf(*layout, column);
    if (i >= 0) {
        layout->header[i] = name;
    }
}

void drop(Written *layout, const char *column)
{
    const int i = columnOf(*layout, column);
    if (i < 0) {
        return;
    }
    layout->header.removeAt(i);
    for (QStringList &row : layout->rows) {
        row.removeAt(i);
    }
}

void insert(Written *layout, int at, const QString &name, const QString &cell)
{
    layout->header.insert(at, name);
    for (QStringList &row : layout->rows) {
        row.insert(at, cell);
    }
}

void permute(Written *layout, unsigned seed)
{
    QVector<int> order(layout->header.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(seed));
    const auto permuted = [&order](const QStringList &cells) {
        QStringList moved;
        for (const int i : order) {
            moved.append(cells.value(i));
        }
        return moved;
    };
    layout->header = permuted(layout->header);
    for (QStringList &row : layout->rows) {
        row = permuted(row);
    }
}

QDate dateOf(const QString &cell)
{
    return QDate::fromString(cell, QStringLiteral("yyyyMMdd"));
}

void writeDates(Written *layout, const char *format)
{
    changeCells(layout, "成交日期", [format](const QString &cell) {
        return dateOf(cell).isValid() ? dateOf(cell).toString(QString::fromUtf8(format)) : cell;
    });
}

void writeTimes(Written *layout, const char *format)
{
    changeCells(layout, "成交时间", [format](const QString &cell) {
        return QTime::fromString(cell, QStringLiteral("HH:mm:ss")).toString(QString::fromUtf8(format));
    });
}

const char *const amountColumns[] = {"成交数量", "成交价格", "成交金额", "手续费",  "印花税",
                                     "过户费",   "发生金额", "股份余额", "资金余额"};

void writeAmounts(Written *layout, const std::function<QString(const QString &)> &change)
{
    for (const char *const column : amountColumns) {
        changeCells(layout, column, change);
    }
}

QString withThousands(const QString &cell)
{
    QString text = cell;
    const int end = text.contains(QLatin1Char('.')) ? text.indexOf(QLatin1Char('.')) : text.size();
    for (int i = end - 3; i > (text.startsWith(QLatin1Char('-')) ? 1 : 0); i -= 3) {
        text.insert(i, QLatin1Char(','));
    }
    return text.contains(QLatin1Char(',')) ? QLatin1Char('"') + text + QLatin1Char('"') : text;
}

QString inFullWidth(const QString &cell)
{
    QString text = cell;
    for (QChar &character : text) {
        const ushort code = character.unicode();
        character = code >= '0' && code <= '9' ? QChar(static_cast<ushort>(code + 0xFEE0)) : character;
    }
    return text;
}

QString inBrackets(const QString &cell)
{
    return cell.startsWith(QLatin1Char('-')) ? QLatin1Char('(') + cell.mid(1) + QLatin1Char(')') : cell;
}

bool isSale(const Written &layout, const QStringList &row)
{
    const int i = columnOf(layout, "业务名称");
    return i >= 0 && row[i].contains(QStringLiteral("卖出"));
}

/// The numbers of sales below zero, as some clients have them.
void negateSales(Written *layout, const char *column)
{
    const int i = columnOf(*layout, column);
    for (QStringList &row : layout->rows) {
        if (i >= 0 && isSale(*layout, row)) {
            row[i] = QLatin1Char('-') + row[i];
        }
    }
}

void mergeDateAndTime(Written *layout, const char *name, const char *format)
{
    const int date = columnOf(*layout, "成交日期");
    const int time = columnOf(*layout, "成交时间");
    if (date < 0 || time < 0) {
        return;
    }
    for (QStringList &row : layout->rows) {
        row[date] = dateOf(row[date]).toString(QString::fromUtf8(format)) + QLatin1Char(' ') + row[time];
    }
    drop(layout, "成交时间");
    rename(layout, "成交日期", QString::fromUtf8(name));
}

void sumFees(Written *layout)
{
    const int commission = columnOf(*layout, "手续费");
    const int duty = columnOf(*layout, "印花税");
    const int transfer = columnOf(*layout, "过户费");
    if (commission < 0 || duty < 0 || transfer < 0) {
        return;
    }
    bool isPlain = false; // another change may have come before
    layout->rows.constFirst()[commission].toDouble(&isPlain);
    if (!isPlain) {
        return;
    }
    for (QStringList &row : layout->rows) {
        const double sum = row[commission].toDouble() + row[duty].toDouble() + row[transfer].toDouble();
        row[commission] = QString::number(sum, 'f', 2);
    }
    layout->header[commission] = QStringLiteral("总费用");
    drop(layout, "印花税");
    drop(layout, "过户费");
}

/// Changes what is a number written plainly; another change may have come before.
template <typename Change>
QString ofPlainNumber(const QString &cell, const Change &change)
{
    bool isPlain = false;
    const double number = cell.toDouble(&isPlain);
    return isPlain ? change(number) : cell;
}

QString lotsOf(const QString &shares)
{
    return ofPlainNumber(shares, [](double number) { return QString::number(number / 100); });
}

QString tenThousandsOf(const QString &yuan)
{
    return ofPlainNumber(yuan, [](double number) { return QString::number(number / 10000, 'f', 6); });
}

/// A header with its row of names in another order half-way.
void addSecondHeader(Written *layout)
{
    Written second = *layout;
    permute(&second, 5);
    const int half = layout->rows.size() / 2;
    QVector<QStringList> rows = layout->rows.mid(0, half);
    rows.append(second.header);
    rows += second.rows.mid(half);
    layout->rows = rows;
}

void repeatHeader(Written *layout)
{
    for (int i = layout->rows.size() - 4; i > 0; i -= 4) {
        layout->rows.insert(i, layout->header);
    }
}

void addTotals(Written *layout)
{
    QStringList total;
    for (int i = 0; i < layout->header.size(); ++i) {
        total.append(i == 0 ? QStringLiteral("合计") : QStringLiteral("123.45"));
    }
    layout->rows.append(total);
}

struct Mutation
{
    const char *name;
    void (*apply)(Written *layout);
    bool isRefused = false; ///< else the books are the same
    bool addsLines = false; ///< that are no entries: of two it comes last, as the other one would change them
};

// clang-format off
const Mutation mutations[] = {
    {"AsItIs", [](Written *) {}},
    {"ColumnsReversed", [](Written *l) { std::reverse(l->header.begin(), l->header.end()); for (QStringList &row : l->rows) { std::reverse(row.begin(), row.end()); } }},
    {"ColumnsShuffled", [](Written *l) { permute(l, 1); }},
    {"ColumnsShuffledOtherwise", [](Written *l) { permute(l, 2); }},
    {"ColumnsShuffledOnceMore", [](Written *l) { permute(l, 3); }},
    {"Tabs", [](Written *l) { l->separator = QStringLiteral("\t"); }},
    {"Semicolons", [](Written *l) { l->separator = QStringLiteral(";"); }},
    {"Pipes", [](Written *l) { l->separator = QStringLiteral("|"); }},
    {"SpacedPipes", [](Written *l) { l->separator = QStringLiteral(" | "); }},
    {"AlignedWithTabs", [](Written *l) { l->separator = QStringLiteral("\t"); l->isPadded = true; }},
    {"AlignedWithCommas", [](Written *l) { l->isPadded = true; }},
    {"Page", [](Written *l) { l->isMarkup = true; }},
    {"Gb18030", [](Written *l) { l->encoding = "GB18030"; }},
    {"Utf8WithMark", [](Written *l) { l->hasMark = true; }},
    {"Utf16", [](Written *l) { l->encoding = "UTF-16LE"; l->hasMark = true; }},
    {"Utf16OfTheOtherOrder", [](Written *l) { l->encoding = "UTF-16BE"; l->hasMark = true; }},
    {"WindowsLineEnds", [](Written *l) { l->lineEnd = QStringLiteral("\r\n"); }},
    {"OldMacLineEnds", [](Written *l) { l->lineEnd = QStringLiteral("\r"); }},
    {"NoLastLineEnd", [](Written *l) { l->hasLastEnd = false; }},
    {"EmptyLinesBetween", [](Written *l) { l->lineEnd = QStringLiteral("\n\n"); }},
    {"Quoted", [](Written *l) { l->wrapped = [](const QString &cell) { return QLatin1Char('"') + cell + QLatin1Char('"'); }; }},
    {"WrappedAsFormulas", [](Written *l) { l->wrapped = [](const QString &cell) { return QStringLiteral("=\"%1\"").arg(cell); }; }},
    {"BlanksAround", [](Written *l) { l->wrapped = [](const QString &cell) { return QStringLiteral("  %1 ").arg(cell); }; }},
    {"CodesWrapped", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return QStringLiteral("= \"%1   \"").arg(cell); }); }},
    {"SharesInTheUnit", [](Written *l) { rename(l, "成交数量", QStringLiteral("成交数量(股)")); rename(l, "成交金额", QStringLiteral("成交金额（元）")); }},
    {"BalanceInTenThousands", [](Written *l) { changeCells(l, "成交金额", &tenThousandsOf); rename(l, "成交金额", QStringLiteral("成交金额(万元)")); }},
    {"QuantityInLots", [](Written *l) { changeCells(l, "成交数量", &lotsOf); rename(l, "成交数量", QStringLiteral("成交数量(手)")); }},
    {"SalesBelowZero", [](Written *l) { negateSales(l, "成交数量"); }},
    {"AmountsOfSalesBelowZero", [](Written *l) { negateSales(l, "成交金额"); }},
    {"NoSigns", [](Written *l) { changeCells(l, "发生金额", [](const QString &cell) { return QString(cell).remove(QLatin1Char('-')); }); }},
    {"BracketsForMinus", [](Written *l) { changeCells(l, "发生金额", &inBrackets); }},
    {"PlusSigns", [](Written *l) { changeCells(l, "发生金额", [](const QString &cell) { return cell.startsWith(QLatin1Char('-')) ? cell : QLatin1Char('+') + cell; }); }},
    {"FullWidthMinus", [](Written *l) { changeCells(l, "发生金额", [](const QString &cell) { return QString(cell).replace(QLatin1Char('-'), QStringLiteral("－")); }); }},
    {"LongMinus", [](Written *l) { changeCells(l, "发生金额", [](const QString &cell) { return QString(cell).replace(QLatin1Char('-'), QStringLiteral("−")); }); }},
    {"Thousands", [](Written *l) { writeAmounts(l, &withThousands); }},
    {"YuanSigns", [](Written *l) { changeCells(l, "成交金额", [](const QString &cell) { return QStringLiteral("￥") + cell; }); }},
    {"FullWidthDigits", [](Written *l) { writeAmounts(l, &inFullWidth); }},
    {"ManyDecimals", [](Written *l) { writeAmounts(l, [](const QString &cell) { return cell.contains(QLatin1Char('.')) ? cell + QStringLiteral("0000") : cell + QStringLiteral(".0000"); }); }},
    {"DashesForNothing", [](Written *l) { writeAmounts(l, [](const QString &cell) { return ofPlainNumber(cell, [&cell](double number) { return number == 0 ? QStringLiteral("--") : cell; }); }); }},
    {"EmptyForNothing", [](Written *l) { writeAmounts(l, [](const QString &cell) { return ofPlainNumber(cell, [&cell](double number) { return number == 0 ? QString() : cell; }); }); }},
    {"TitleAbove", [](Written *l) { l->before = QStringList{QStringLiteral("对账单")}; }},
    {"MergedTitleAbove", [](Written *l) { l->before = QStringList{QStringLiteral("交割单,,,,,,"), QStringLiteral("客户号:,88880001,姓名:,某某,,,")}; }},
    {"RuleAbove", [](Written *l) { l->before = QStringList{QStringLiteral("起始日期:20240101 终止日期:20240131"), QString(80, QLatin1Char('-'))}; }},
    {"RemarkAbove", [](Written *l) { l->before = QStringList{QStringLiteral("# exported")}; }},
    {"TotalsBelow", &addTotals, false, true},
    {"CountBelow", [](Written *l) { l->after = QStringList{QStringLiteral("共13条记录")}; }},
    {"RuleBelow", [](Written *l) { l->after = QStringList{QString(40, QLatin1Char('='))}; }},
    {"EndOfFileBelow", [](Written *l) { l->after = QStringList{QStringLiteral("\x1A")}; }},
    {"EmptyColumnAtFirst", [](Written *l) { insert(l, 0, QString(), QString()); }},
    {"EmptyColumnAtLast", [](Written *l) { insert(l, l->header.size(), QString(), QString()); }},
    {"EmptyColumnBetween", [](Written *l) { insert(l, 5, QString(), QString()); }},
    {"RunningNumberAtFirst", [](Written *l) { insert(l, 0, QStringLiteral("序号"), QStringLiteral("7")); }},
    {"ColumnThatNobodyKnows", [](Written *l) { insert(l, 3, QStringLiteral("甲乙"), QStringLiteral("12.50")); }},
    {"OrderedPriceAndQuantity", [](Written *l) { insert(l, 4, QStringLiteral("委托价格"), QStringLiteral("1.00")); insert(l, 4, QStringLiteral("委托数量"), QStringLiteral("900")); }},
    {"RemarkColumn", [](Written *l) { insert(l, l->header.size(), QStringLiteral("备注"), QStringLiteral("买入")); }},
    {"SecondHeader", &addSecondHeader, false, true},
    {"RepeatedHeader", &repeatHeader, false, true},
    {"NewestFirst", [](Written *l) { std::reverse(l->rows.begin(), l->rows.end()); }},
    {"NewestFirstWithoutTimes", [](Written *l) { drop(l, "成交时间"); std::reverse(l->rows.begin(), l->rows.end()); }},
    {"DashedDates", [](Written *l) { writeDates(l, "yyyy-MM-dd"); }},
    {"SlashedDates", [](Written *l) { writeDates(l, "yyyy/M/d"); }},
    {"DottedDates", [](Written *l) { writeDates(l, "yyyy.MM.dd"); }},
    {"ChineseDates", [](Written *l) { writeDates(l, "yyyy年M月d日"); }},
    {"DaysOfASpreadsheet", [](Written *l) { changeCells(l, "成交日期", [](const QString &cell) { return QString::number(QDate(1899, 12, 30).daysTo(dateOf(cell))); }); }},
    {"AmericanDates", [](Written *l) { writeDates(l, "M/d/yyyy"); }, true},
    {"TwoDigitYears", [](Written *l) { writeDates(l, "yyMMdd"); }, true},
    {"DateAndTimeInTheDate", [](Written *l) { mergeDateAndTime(l, "成交日期", "yyyy-MM-dd"); }},
    {"DateAndTimeInTheTime", [](Written *l) { mergeDateAndTime(l, "成交时间", "yyyy/M/d"); }},
    {"TimesToTheMinute", [](Written *l) { writeTimes(l, "HH:mm"); }},
    {"TimesAsDigits", [](Written *l) { writeTimes(l, "HHmmss"); }},
    {"TimesWithoutZero", [](Written *l) { writeTimes(l, "Hmmss"); }},
    {"TimesOfHalfDays", [](Written *l) { writeTimes(l, "h:mm:ss AP"); }},
    {"TimesToTheHundredth", [](Written *l) { writeTimes(l, "HHmmss00"); }},
    {"CodesWithoutZeros", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return ofPlainNumber(cell, [](double number) { return QString::number(number, 'f', 0); }); }); }},
    {"CodesAfterTheMarket", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return (cell[0] == QLatin1Char('0') || cell[0] == QLatin1Char('1') ? QStringLiteral("SZ") : QStringLiteral("SH")) + cell; }); }},
    {"CodesBeforeTheMarket", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return cell + (cell[0] == QLatin1Char('0') || cell[0] == QLatin1Char('1') ? QStringLiteral(".XSHE") : QStringLiteral(".XSHG")); }); }},
    {"CodesInSmallLetters", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return (cell[0] == QLatin1Char('0') || cell[0] == QLatin1Char('1') ? QStringLiteral("sz.") : QStringLiteral("sh.")) + cell; }); }},
    {"CodesAfterAnApostrophe", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return QLatin1Char('\'') + cell; }); }},
    {"CodesWithABlank", [](Written *l) { changeCells(l, "证券代码", [](const QString &cell) { return cell + QLatin1Char(' '); }); }},
    {"NamesWithABlank", [](Written *l) { changeCells(l, "证券名称", [](const QString &cell) { return QString(cell).insert(2, QLatin1Char(' ')); }); }},
    {"NamesWithALineBreak", [](Written *l) { changeCells(l, "证券名称", [](const QString &cell) { return QLatin1Char('"') + QString(cell).insert(2, QLatin1Char('\n')) + QLatin1Char('"'); }); }},
    {"NoTimes", [](Written *l) { drop(l, "成交时间"); }},
    {"NoNames", [](Written *l) { drop(l, "证券名称"); }},
    {"NoAmount", [](Written *l) { drop(l, "成交金额"); }},
    {"NoFees", [](Written *l) { drop(l, "手续费"); drop(l, "印花税"); drop(l, "过户费"); }},
    {"OneFee", &sumFees},
    {"NoBalanceOfShares", [](Written *l) { drop(l, "股份余额"); }},
    {"NoBalanceOfCash", [](Written *l) { drop(l, "资金余额"); }},
    {"NoOrderNumbers", [](Written *l) { drop(l, "合同编号"); }},
    {"NoDealNumbers", [](Written *l) { drop(l, "成交编号"); }},
    {"NoHolder", [](Written *l) { drop(l, "股东代码"); }},
    {"NoCurrency", [](Written *l) { drop(l, "币种"); }},
    {"NoDates", [](Written *l) { drop(l, "成交日期"); }, true},
    {"NoKinds", [](Written *l) { drop(l, "业务名称"); }, true},
    {"NoQuantities", [](Written *l) { drop(l, "成交数量"); }, true},
    {"NoPrices", [](Written *l) { drop(l, "成交价格"); }},
    {"NoCodes", [](Written *l) { drop(l, "证券代码"); }, true},
    {"DealNumbersOfASpreadsheet", [](Written *l) { changeCells(l, "成交编号", [](const QString &) { return QStringLiteral("1.05E+14"); }); }, true},
    {"DecimalCommas", [](Written *l) { l->separator = QStringLiteral(";"); writeAmounts(l, [](const QString &cell) { return QString(cell).replace(QLatin1Char('.'), QLatin1Char(',')); }); }, true},
};
// clang-format on

QString lineOf(const QStringList &cells, const Written &layout)
{
    QStringList written;
    for (const QString &cell : cells) {
        QString text = layout.wrapped ? layout.wrapped(cell) : cell;
        written.append(layout.isPadded ? text.leftJustified(14) : text);
    }
    return written.join(layout.separator);
}

QString pageOf(const Written &layout)
{
    QString page = QStringLiteral("<html><body><table>");
    for (const QStringList &row : QVector<QStringList>{layout.header} + layout.rows) {
        page += QStringLiteral("<tr>");
        for (const QString &cell : row) {
            page += QStringLiteral("<td>%1</td>").arg(QString(cell).remove(QLatin1Char('"')));
        }
        page += QStringLiteral("</tr>\n");
    }
    return page + QStringLiteral("</table></body></html>");
}

QByteArray bytesOf(const Written &layout)
{
    QStringList lines = layout.before;
    lines.append(lineOf(layout.header, layout));
    for (const QStringList &row : layout.rows) {
        lines.append(lineOf(row, layout));
    }
    lines += layout.after;
    const QString text = layout.isMarkup
                             ? pageOf(layout)
                             : lines.join(layout.lineEnd) + (layout.hasLastEnd ? layout.lineEnd : QString());
    const QString marked = layout.hasMark ? QChar(QChar::ByteOrderMark) + text : text;
    const QTextCodec *const codec = QTextCodec::codecForName(layout.encoding);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->fromUnicode(marked.constData(), marked.size(), &state);
}

/// What the account has of it, whatever else a layout tells: numbers and times are not in all.
std::vector<std::string> booksOf(const StatementContents &contents)
{
    std::vector<std::string> books;
    for (Execution entry : contents.executions) {
        entry.time = ClockTime();
        entry.orderNo.clear();
        entry.dealNo.clear();
        books.push_back(described(entry));
    }
    for (const MoneyEntry &money : contents.money) {
        books.push_back((money.date.text() + QLatin1Char(' ') + money.kind + QLatin1Char(' ') +
                         money.amount.text() + QLatin1Char(' ') + money.currency)
                            .toStdString());
    }
    return books;
}

class StatementMutation : public ::testing::TestWithParam<Mutation>
{
protected:
    /// The books that are read, or nothing when the statement is refused, as a whole or some of its rows.
    std::optional<std::vector<std::string>> read(const Written &layout)
    {
        const QString path = m_directory.filePath(QStringLiteral("statement"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytesOf(layout));
        file.close();
        try {
            const StatementContents contents = readStatementFile(path, {});
            m_reasons = reasons(contents);
            return contents.badRowCount > 0 ? std::nullopt : std::optional(booksOf(contents));
        } catch (const Error &error) {
            m_reasons = {error.what()};
            return std::nullopt;
        }
    }

    /// Why it was refused.
    const std::vector<std::string> &why() const { return m_reasons; }

private:
    QTemporaryDir m_directory;
    std::vector<std::string> m_reasons;
};

} // namespace

TEST_P(StatementMutation, GivesTheSameBooksOrIsRefused)
{
    Written layout = asWritten();
    GetParam().apply(&layout);

    const auto books = read(layout);

    EXPECT_EQ(!books, GetParam().isRefused) << ::testing::PrintToString(why());
    if (books) {
        EXPECT_EQ(*books, read(asWritten()));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, StatementMutation, ::testing::ValuesIn(mutations), ByName());

using StatementMutations = StatementMutation;

TEST_F(StatementMutations, OfTwoAtATimeNeverDifferSilently)
{
    const auto trueBooks = read(asWritten());
    ASSERT_TRUE(trueBooks);
    const int most = qEnvironmentVariableIsSet("STATEMENT_MUTATIONS") ? INT_MAX : 300;
    std::mt19937 random(14);
    constexpr auto count = std::size(mutations);
    for (int i = 0; i < std::min(most, static_cast<int>(count * count)); ++i) {
        const size_t pair = most == INT_MAX ? static_cast<size_t>(i) : random() % (count * count);
        const Mutation &first = mutations[pair / count];
        const Mutation &second = mutations[pair % count];
        if (first.addsLines) {
            continue;
        }
        Written layout = asWritten();
        first.apply(&layout);
        second.apply(&layout);
        const auto books = read(layout);
        if (books) {
            EXPECT_EQ(*books, *trueBooks) << first.name << " and " << second.name;
        }
    }
}

TEST_F(StatementMutations, WithAnyKnownNameOfAColumnGiveTheSameBooks)
{
    const auto trueBooks = read(asWritten());
    for (const ColumnNames::Spellings &row : ColumnNames::spellings()) {
        for (const QString &name : row.names) {
            Written layout = asWritten();
            for (const QString &own : asWritten().header) {
                if (row.names.contains(own)) {
                    rename(&layout, own.toUtf8().constData(), name);
                    break;
                }
            }
            EXPECT_EQ(read(layout), trueBooks) << name.toStdString() << ::testing::PrintToString(why());
        }
    }
}

} // namespace TradeModule
