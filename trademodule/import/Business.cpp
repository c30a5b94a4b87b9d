#include "trademodule/import/Business.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace TradeModule::Business {

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

struct BusinessRow
{
    BusinessKind kind;
    QStringList parts; ///< an entry is of this kind when its word contains one of them
};

/// Looked through in order: a word of a later row may be part of an earlier one's.
const std::vector<BusinessRow> &table()
{
    static const char *const transfers = QT_TR_NOOP("bank transfers");
    static const char *const custody = QT_TR_NOOP("custody moves");
    static const char *const allotments = QT_TR_NOOP("allotments");
    static const char *const loans = QT_TR_NOOP("margin loans");
    static const std::vector<BusinessRow> rows = {
        {{QT_TR_NOOP("cancellations"), Effect::Nothing}, words("撤买 撤卖 撤单 撤销 撤回 已撤 废单 取消")},
        {{QT_TR_NOOP("allotment numbers"), Effect::Nothing}, words("配号 中签通知 中签公布 未中签")},
        {{QT_TR_NOOP("sales"), Effect::Sell}, words("卖券 融资平仓 融资强制平仓 融资强平")},
        {{QT_TR_NOOP("purchases"), Effect::Buy}, words("融资开仓")},
        {{QT_TR_NOOP("repo"), Effect::Repo},
         words("质押回购 质押购回 拆出 拆入 融券回购 融券购回 融资回购 融资购回 逆回购 正回购 国债回购 "
               "债券回购 "
               "报价回购 回购融券 回购融资 回购到期 购回到期")},
        {{QT_TR_NOOP("short sales"), Effect::ShortSale}, words("融券 买券还券 还券 余券 券源")},
        {{loans, Effect::MoneyOut},
         words("直接还款 偿还 融资还 还款利 融资利息 归还融资 还息 扣收利息 融资费用")},
        {{loans, Effect::MoneyIn}, words("融资借 融资款 借入资金")},
        {{QT_TR_NOOP("dividend tax"), Effect::MoneyOut},
         words("红利税 股息税 利息税 所得税 差异税 补税 扣税 税款 税补缴")},
        {{QT_TR_NOOP("reinvested dividends"), Effect::SharesIn}, words("再投")},
        {{QT_TR_NOOP("bonus shares"), Effect::Split}, words("红股 送股 转增 送转 派股 送红")},
        {{custody, Effect::Nothing}, words("解禁 解除限售 转流通")},
        {{custody, Effect::SharesIn}, words("股份蓝补 证券蓝补")},
        {{custody, Effect::SharesOut}, words("股份红冲 证券红冲")},
        {{QT_TR_NOOP("conversions"), Effect::Conversion}, words("换股 吸收合并")},
        {{QT_TR_NOOP("splits"), Effect::Split}, words("拆分 拆股 拆细 合并 缩股 折算 份额调整")},
        {{QT_TR_NOOP("dividends"), Effect::MoneyIn}, words("红利 股息 派息 分红 派现")},
        {{QT_TR_NOOP("redemptions"), Effect::Redemption}, words("兑付 回售 赎回 要约 摘牌 还本")},
        {{QT_TR_NOOP("interest"), Effect::MoneyIn}, words("利息 结息 兑息 付息 计息")},
        {{allotments, Effect::Entry},
         words("新股入 新股上市 中签入 中签上市 配股入 配股上市 配债入 配债上市 转债入账 转债入帐 转债上市 "
               "新债入 新债上市 "
               "配售入 配售上市 认购入 申购入 增发入 增发上市")},
        {{QT_TR_NOOP("subscriptions"), Effect::MoneyIn},
         words("返款 退款 款划回 款返还 款退回 款退还 申购还 认购还 申购退 资金解冻")},
        {{allotments, Effect::Payment}, words("中签 缴款 配股 配债 配售 认购 新股扣款 申购扣款")},
        {{QT_TR_NOOP("subscriptions"), Effect::Application}, words("申购")},
        {{allotments, Effect::Payment}, words("新股 新债 增发")},
        {{QT_TR_NOOP("exercises"), Effect::Shares}, words("行权")},
        {{QT_TR_NOOP("conversions"), Effect::Conversion}, words("转股 换股 债转 转换")},
        {{transfers, Effect::MoneyIn},
         words("银行转证 银行转存 银转证 银证转入 转账存入 转帐存入 转存 资金存 资金转入 资金划入 转入资金 "
               "入金 现金存 资金入 资金蓝补")},
        {{transfers, Effect::MoneyOut},
         words("证券转银 证转银 银证转出 转账取出 转帐取出 转账支取 转银行 银行转取 转取 资金取 资金转出 "
               "资金划出 转出资金 出金 现金取 资金出 "
               "资金红冲")},
        {{transfers, Effect::Money}, words("银证 银行转 资金划转 转账")},
        {{custody, Effect::Nothing}, words("指定 冻结 解冻 登记 质押")},
        {{custody, Effect::SharesIn}, words("转入 划入 过入 入库 托入 转托入 存入")},
        {{custody, Effect::SharesOut}, words("转出 划出 过出 出库 托出 转托出")},
        {{custody, Effect::Shares}, words("托管 过户 划转 证券转 市值转 转托 担保品 担保物")},
    };
    return rows;
}

/// What changes cash where nothing is traded; looked at after buys and sells, for which these are columns'
/// names.
const std::vector<BusinessRow> &moneyWords()
{
    static const std::vector<BusinessRow> rows = {
        {{QT_TR_NOOP("fees"), Effect::MoneyOut}, words("费 佣金 印花税 税")},
    };
    return rows;
}

std::optional<BusinessKind> containedIn(const std::vector<BusinessRow> &rows, const QString &word)
{
    for (const BusinessRow &row : rows) {
        if (std::any_of(row.parts.begin(), row.parts.end(),
                        [&word](const QString &part) { return word.contains(part); })) {
            return row.kind;
        }
    }
    return std::nullopt;
}

BusinessKind purchase()
{
    return {QT_TR_NOOP("purchases"), Effect::Buy};
}

BusinessKind sale()
{
    return {QT_TR_NOOP("sales"), Effect::Sell};
}

/// 买入担保品, 证券卖出清算: whatever stands around the one character.
std::optional<BusinessKind> ofTrade(const QString &word)
{
    const bool isBuy = word.contains(QStringLiteral("买"));
    const bool isSell = word.contains(QStringLiteral("卖"));
    if (isBuy != isSell) {
        return isBuy ? purchase() : sale();
    }
    const QString upper = word.toUpper();
    if (upper == QLatin1String("B") || upper == QLatin1String("BUY") || upper == QLatin1String("0B") ||
        upper == QLatin1String("BOUGHT")) {
        return purchase();
    }
    const bool isSale = upper == QLatin1String("S") || upper == QLatin1String("SELL") ||
                        upper == QLatin1String("0S") || upper == QLatin1String("SOLD");
    return isSale ? std::optional(sale()) : std::nullopt;
}

/// 买入担保品 is a trade, 担保品转入 none: words of custody do not make a trade of collateral a move.
bool isCollateralTrade(const QString &word)
{
    return word.contains(QStringLiteral("担保")) && ofTrade(word).has_value();
}

/// True of a correction: whether it is what was right, or takes back what was wrong, no word tells.
bool isCorrection(const QString &word)
{
    static const QStringList parts = words("更正 差错 调账 调帐");
    return std::any_of(parts.begin(), parts.end(),
                       [&word](const QString &part) { return word.contains(part); });
}

std::optional<BusinessKind> lookedUp(const QString &word)
{
    if (isCorrection(word)) {
        return std::nullopt;
    }
    if (isCollateralTrade(word)) {
        return ofTrade(word);
    }
    if (const auto kind = containedIn(table(), word)) {
        return kind;
    }
    if (const auto kind = ofTrade(word)) {
        return kind;
    }
    return containedIn(moneyWords(), word);
}

/// True where the word in brackets tells of a cancellation or a reversal.
bool isTakenBack(const QString &inBrackets)
{
    static const QStringList parts = words("撤 废 冲 取消 抹");
    return std::any_of(parts.begin(), parts.end(),
                       [&inBrackets](const QString &part) { return inBrackets.contains(part); });
}

struct ProfileWord
{
    const char *word;
    BusinessKind kind;
};

const std::vector<ProfileWord> &profileTable()
{
    static const std::vector<ProfileWord> rows = {
        {"buy", purchase()},
        {"sell", sale()},
        {"nothing", {QT_TR_NOOP("entries without effect"), Effect::Nothing}},
        {"money in", {QT_TR_NOOP("other money"), Effect::MoneyIn}},
        {"money out", {QT_TR_NOOP("other money"), Effect::MoneyOut}},
        {"split", {QT_TR_NOOP("splits"), Effect::Split}},
        {"shares in", {QT_TR_NOOP("custody moves"), Effect::SharesIn}},
        {"shares out", {QT_TR_NOOP("custody moves"), Effect::SharesOut}},
        {"allotment paid", {QT_TR_NOOP("allotments"), Effect::Payment}},
        {"allotment entered", {QT_TR_NOOP("allotments"), Effect::Entry}},
        {"repo", {QT_TR_NOOP("repo"), Effect::Repo}},
        {"short sale", {QT_TR_NOOP("short sales"), Effect::ShortSale}},
    };
    return rows;
}

} // namespace

QString plainWord(const QString &cell)
{
    const QString word = CellValue::cleaned(cell);
    for (int i = 0; i < word.size(); ++i) {
        if (word[i] == QLatin1Char(':') || (word[i] == QLatin1Char('(') && !isTakenBack(word.mid(i)))) {
            return word.left(i).trimmed();
        }
    }
    return word;
}

QString withoutReversal(const QString &word)
{
    static const QStringList parts = words("冲销 冲正 冲账 冲帐 冲回 回冲 抹账 抹帐 撤销 取消 红冲");
    static const QStringList kinds = words("资金红冲 股份红冲 证券红冲"); // words of their own
    const auto isIn = [&word](const QString &part) { return word.contains(part); };
    if (std::any_of(kinds.begin(), kinds.end(), isIn)) {
        return word;
    }
    const auto part = std::find_if(parts.begin(), parts.end(), isIn);
    return part == parts.end() ? word : QString(word).remove(*part).trimmed();
}

std::optional<BusinessKind> of(const QString &word)
{
    if (word.isEmpty()) {
        return std::nullopt;
    }
    for (const ProfileWord &row : profileTable()) {
        if (word == QLatin1String(row.word)) {
            return row.kind;
        }
    }
    return lookedUp(word);
}

std::optional<BusinessKind> ofSide(const QString &word)
{
    if (word == QLatin1String("1")) {
        return purchase();
    }
    return word == QLatin1String("2") ? std::optional(sale()) : of(word);
}

BusinessKind otherMoney()
{
    return {QT_TR_NOOP("other money"), Effect::Money};
}

BusinessKind repo()
{
    return {QT_TR_NOOP("repo"), Effect::Repo};
}

bool isUndealt(const QString &state)
{
    static const QStringList parts = words("撤 废 未成 未报 待报 拒 失败 无效 cancel reject");
    const QString lower = state.toLower();
    const bool isPart = lower.contains(QStringLiteral("部")) || lower.contains(QStringLiteral("未撤"));
    return !isPart && std::any_of(parts.begin(), parts.end(),
                                  [&lower](const QString &part) { return lower.contains(part); });
}

bool isYes(const QString &flag)
{
    static const QStringList yes = words("是 y yes 1 t true 撤 已撤 撤单 撤销");
    return yes.contains(flag.toLower());
}

bool isTotal(const QString &word)
{
    static const QStringList parts = words("合计 总计 小计 汇总 本页 累计");
    return std::any_of(parts.begin(), parts.end(),
                       [&word](const QString &part) { return word.contains(part); });
}

bool isOfFunds(const QString &word)
{
    static const QStringList parts = words("基金 理财 货币 现金宝 保证金产品 天添利");
    return !isOfFundShares(word) && std::any_of(parts.begin(), parts.end(),
                                                [&word](const QString &part) { return word.contains(part); });
}

bool isOfFundShares(const QString &word)
{
    return word.contains(QLatin1String("ETF"), Qt::CaseInsensitive);
}

bool isOfHongKong(const QString &word)
{
    return word.contains(QStringLiteral("港股")) || word.contains(QStringLiteral("港通"));
}

QStringList profileWords()
{
    QStringList all;
    for (const ProfileWord &row : profileTable()) {
        all.append(QLatin1String(row.word));
    }
    return all;
}

} // namespace TradeModule::Business
