#include "trademodule/import/EntryKind.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace TradeModule::EntryKind {

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '));
}

struct NoTradeRow
{
    const char *kind;
    QStringList parts; ///< an entry is of this kind when its word contains one of them
};

/// Looked through in order: a word of a later row may be part of an earlier one's.
const std::vector<NoTradeRow> &noTradeKinds()
{
    static const std::vector<NoTradeRow> table = {
        {QT_TR_NOOP("allotment numbers"), words("配号")},
        {QT_TR_NOOP("subscriptions"), words("申购 中签 新股 认购 赎回 配售缴款")},
        {QT_TR_NOOP("rights issues"), words("配股 配债")},
        {QT_TR_NOOP("cancellations"), words("撤买 撤卖 撤单 撤销委托")},
        {QT_TR_NOOP("short sales"), words("融券卖出 买券还券 现券还券 融券平仓")},
        {QT_TR_NOOP("repo"), words("回购 购回")},
        {QT_TR_NOOP("dividend tax"), words("红利税 股息税 利息税")},
        {QT_TR_NOOP("dividends"), words("红利 股息 派息 分红")},
        {QT_TR_NOOP("interest"), words("利息 结息")},
        {QT_TR_NOOP("bank transfers"), words("银行转 转银行 银证 转存 转取 资金存 资金取 转入资金 转出资金")},
        {QT_TR_NOOP("custody moves"), words("指定 托管 转入 转出 划入 划出 冻结 解冻 登记 证券转")},
        {QT_TR_NOOP("conversions"), words("合并 拆分 折算 转股 行权 兑付 兑息 要约")},
        {QT_TR_NOOP("margin loans"), words("直接还款 偿还融资 融资借入 融资偿还 还款利")},
    };
    return table;
}

struct SideRow
{
    Side side;
    QStringList whole;  ///< an entry's word is one of these
    QString ending;     ///< or ends like this
    QString sideNumber; ///< in a column of sides alone
};

const std::vector<SideRow> &sides()
{
    static const std::vector<SideRow> table = {
        {Side::Buy, words("买 B BUY"), QStringLiteral("买入"), QStringLiteral("1")},
        {Side::Sell, words("卖 S SELL 卖券还款"), QStringLiteral("卖出"), QStringLiteral("2")},
    };
    return table;
}

bool containsOne(const QString &word, const QStringList &parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&word](const QString &part) { return word.contains(part); });
}

} // namespace

QString plainWord(const QString &cell)
{
    static const QRegularExpression name(QStringLiteral("[:(].*$"));
    return CellValue::cleaned(cell).remove(name).trimmed();
}

std::optional<QString> ofNoTrade(const QString &word)
{
    for (const NoTradeRow &row : noTradeKinds()) {
        if (containsOne(word, row.parts)) {
            return translated(row.kind);
        }
    }
    return std::nullopt;
}

bool isBonus(const QString &word)
{
    static const QStringList parts = words("红股 送股 转增");
    return containsOne(word, parts);
}

std::optional<Side> side(const QString &word)
{
    for (const SideRow &row : sides()) {
        if (row.whole.contains(word.toUpper()) || word.endsWith(row.ending)) {
            return row.side;
        }
    }
    return std::nullopt;
}

std::optional<Side> sideOfSideColumn(const QString &word)
{
    for (const SideRow &row : sides()) {
        if (word == row.sideNumber) {
            return row.side;
        }
    }
    return side(word);
}

bool isTotal(const QString &word)
{
    static const QStringList parts = words("合计 总计 小计 汇总 本页 累计");
    return containsOne(word, parts);
}

} // namespace TradeModule::EntryKind
