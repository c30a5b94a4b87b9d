#include "trademodule/import/ColumnNames.h"

#include "trademodule/import/CellValue.h"
#include "trading/TradingUnits.h"

#include <QRegularExpression>

#include <algorithm>

namespace TradeModule::ColumnNames {

namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

struct UnitName
{
    const char *name;
    ColumnUnit unit;
};

constexpr UnitName unitNames[] = {
    {"手", {Trading::sharesOfLot, Trading::bondsOfLot}},
    {"百手", {100 * Trading::sharesOfLot, 100 * Trading::bondsOfLot}},
    {"万手", {10000 * Trading::sharesOfLot, 10000 * Trading::bondsOfLot}},
    {"百股", {100, 100}},
    {"千股", {1000, 1000}},
    {"万股", {10000, 10000}},
    {"千元", {1000, 1000}},
    {"万元", {10000, 10000}},
    {"亿元", {100000000, 100000000}},
    {"万", {10000, 10000}},
};

/// The text in brackets, or after a slash, at a name's end.
const QRegularExpression &unitForm()
{
    static const QRegularExpression form(
        QStringLiteral("[\\(\\[【〔]([^\\)\\]】〕]*)[\\)\\]】〕]$|[/_]([^/_]{1,3})$"));
    return form;
}

} // namespace

const std::vector<Spellings> &spellings()
{
    static const std::vector<Spellings> table = {
        {Column::Date, "date",
         words("成交日期 交易日期 发生日期 交收日期 清算日期 交割日期 业务日期 委托日期 日期 记账日期 交割日 "
               "成交日 业务日 date "
               "tradedate")},
        {Column::Time, "time",
         words("成交时间 发生时间 交易时间 时间 业务时间 委托时间 成交日期时间 time tradetime")},
        {Column::Code, "code",
         words(
             "证券代码 股票代码 证券编码 证券编号 代码 标的代码 产品代码 股票 code symbol ticker stockcode")},
        {Column::Name, "name",
         words("证券名称 股票名称 证券简称 股票简称 名称 简称 产品名称 股票名 证券名 name stockname "
               "securityname")},
        {Column::Side, "side",
         words("买卖标志 买卖方向 买卖类别 委托方向 买卖标识 方向 买卖 交易方向 成交方向 买卖类型 side "
               "direction")},
        {Column::Business, "business",
         words("业务名称 操作 交易类别 委托类别 业务类别 业务类型 业务标志 摘要 真实操作 业务 交易类型 "
               "业务摘要 "
               "交易行为 发生业务 委托类型名称 摘要名称 类型 业务种类 交易种类 business action type")},
        {Column::Remark, "remark", words("备注 说明 remark note")},
        {Column::Price, "price",
         words("成交价格 成交均价 成交价 均价 价格 交易价格 成交单价 price avgprice averageprice")},
        {Column::Quantity, "quantity",
         words("成交数量 成交股数 成交数 成交量 发生数量 数量 交易数量 股数 成交份额 发生股数 quantity qty "
               "volume "
               "shares")},
        {Column::Amount, "amount",
         words("成交金额 成交额 成交总额 交易金额 amount grossamount turnover value")},
        {Column::Net, "net",
         words("发生金额 清算金额 净金额 交收金额 资金发生数 资金发生额 清算额 清算净额 变动资金 收付金额 "
               "变动金额 资金变动 "
               "实际金额 "
               "应收应付 收支金额 发生额 net netamount netvalue")},
        {Column::Income, "income",
         words("收入金额 收入 资金收入 收入额 贷方 贷方金额 贷方发生额 资金增加 转入金额")},
        {Column::Expense, "expense",
         words("支出金额 支出 资金支出 支出额 付出金额 付出 借方 借方金额 借方发生额 资金减少 转出金额")},
        {Column::TotalFee, "total fee",
         words("总费用 费用合计 合计费用 费用 交易费用 总手续费 全部费用 费用总计 fee fees")},
        {Column::Commission, "commission", words("手续费 commission")},
        {Column::CommissionTwin, "second commission", words("佣金 净佣金 实收佣金 标准佣金")},
        {Column::StampDuty, "stamp duty",
         words("印花税 股票印花税 证券印花税 代扣印花税 stampduty stamptax duty")},
        {Column::OtherFee, "other fee",
         words("过户费 其他费 其他费用 其他杂费 其它费 其它费用 其它杂费 杂费 规费 交易规费 结算费 "
               "清算费 "
               "交易所清算费 附加费 经手费 证管费 交易征费 财汇局征费 监管费 委托费 tax levy "
               "transferfee")},
        {Column::OrderNo, "order number",
         words("合同编号 合同号 委托编号 委托序号 申报序号 订单编号 委托号 order orderno orderid")},
        {Column::DealNo, "deal number",
         words("成交编号 成交号 成交序号 流水号 成交流水号 deal dealno tradeid execid executionid")},
        {Column::Market, "market",
         words("交易市场 市场名称 市场代码 市场 交易所 交易所名称 市场类别 market exchange")},
        {Column::Holder, "holder",
         words("股东代码 股东帐户 股东账户 股东帐号 股东账号 证券账号 证券账户 证券帐户 证券帐号")},
        {Column::Account, "account",
         words(
             "资金帐号 资金账号 资金账户 资金帐户 账号 帐号 客户号 客户代码 客户编号 资产账户 账户 account")},
        {Column::Currency, "currency", words("币种 货币 币种名称 货币代码 货币名称 currency")},
        {Column::SharesAfter, "shares after",
         words(
             "股票余额 股份余额 证券余额 剩余数量 后证余额 股份本次余额 证券本次余额 股份余数 库存数量 "
             "剩余股数 "
             "本次股份余额 股票本次余额 持股余额 证券结余 剩余证券数量 持仓 持仓数量 sharesafter position")},
        {Column::CashAfter, "cash after",
         words("资金余额 资金本次余额 剩余金额 本次资金余额 后资金额 账户余额 资金结余 本次金额 现金余额 "
               "剩余资金 余额资金 资金结存 cashafter cashbalance")},
        {Column::State, "state", words("成交状态 成交类型 委托状态 订单状态 状态 status orderstatus")},
        {Column::Cancelled, "cancelled", words("撤单标志 撤单标识 撤销标志 撤销标识 是否撤单 cancelled")},
    };
    return table;
}

bool isUnused(const QString &name)
{
    static const QStringList names = words("序号 编号 行号 席位代码 席位 席位号 委托价格 委托数量 委托时间 "
                                           "委托日期 撤单数量 策略名称 证券中文全称 费用备注 "
                                           "港股通结算汇率 结算汇率 汇率 申报编号 申报时间 申报日期 委托类型 "
                                           "余额 证券数量 证券类别 "
                                           "证券类型 营业部 营业部名称 客户姓名 姓名 股东姓名 操作员 "
                                           "委托方式 备注1 备注2 "
                                           "成交次数 成交笔数 可用余额 可用数量 冻结数量 买卖盈亏 盈亏 "
                                           "到期日期 资产属性 报价方式 打印日期 "
                                           "交收时间 清算时间 前证余额 前资金额");
    return names.contains(name);
}

bool looksLikeFee(const QString &name)
{
    static const QStringList endings = words("费 税 佣 费用 佣金 税费 税金 规金 风险金");
    return std::any_of(endings.begin(), endings.end(),
                       [&name](const QString &ending) { return name.endsWith(ending); });
}

QString plainName(const QString &headerCell)
{
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    QString name = CellValue::cleaned(headerCell).remove(blanks);
    const auto unit = unitForm().match(name);
    return (unit.hasMatch() ? name.left(unit.capturedStart()) : name).toLower();
}

ColumnUnit unitOf(const QString &headerCell)
{
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    const QString name = CellValue::cleaned(headerCell).remove(blanks);
    const auto match = unitForm().match(name);
    const QString text = match.captured(1) + match.captured(2);
    const auto *const row =
        std::find_if(std::begin(unitNames), std::end(unitNames), [&text](const UnitName &candidate) {
            return text == QString::fromUtf8(candidate.name);
        });
    static const QRegularExpression counting(QStringLiteral("[手分角百千万亿]"));
    const bool isUnknown = row == std::end(unitNames) && text.contains(counting);
    return isUnknown ? ColumnUnit{0, 0} : row == std::end(unitNames) ? ColumnUnit() : row->unit;
}

std::optional<Column> ofKey(const QString &key)
{
    for (const Spellings &row : spellings()) {
        if (key == QLatin1String(row.key)) {
            return row.column;
        }
    }
    return key == QLatin1String("unused") ? std::optional(Column::Unused) : std::nullopt;
}

} // namespace TradeModule::ColumnNames
