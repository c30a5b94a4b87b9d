#include "trademodule/import/StatementColumns.h"

#include "trademodule/import/CellValue.h"

#include <QRegularExpression>

namespace TradeModule {

namespace {

struct Spellings
{
    Column column;
    QStringList names; ///< the best first: a statement may have several of them
};

const std::vector<Spellings> &vocabulary()
{
    static const auto words = [](const char *text) {
        return QString::fromUtf8(text).split(QLatin1Char(' '));
    };
    static const std::vector<Spellings> table = {
        {Column::Date, words("成交日期 交易日期 发生日期 交收日期 清算日期 交割日期 业务日期 委托日期 日期")},
        {Column::Time, words("成交时间 发生时间 交易时间 时间 委托时间")},
        {Column::Code, words("证券代码 股票代码 证券编码 代码")},
        {Column::Name, words("证券名称 股票名称 证券简称 股票简称 名称")},
        {Column::Side, words("买卖标志 买卖方向 买卖类别 委托方向 买卖标识 方向 买卖")},
        {Column::Business, words("业务名称 操作 交易类别 委托类别 业务类别 业务类型 业务标志 摘要 真实操作")},
        {Column::Remark, words("备注 说明")},
        {Column::Price, words("成交价格 成交均价 成交价 均价")},
        {Column::Quantity, words("成交数量 成交股数 成交量 发生数量 数量")},
        {Column::Amount, words("成交金额 成交额 成交总额")},
        {Column::Net, words("发生金额 清算金额 净金额 交收金额 资金发生数 资金发生额 变动资金 收付金额")},
        {Column::TotalFee, words("总费用 费用合计 合计费用")},
        {Column::Commission, words("手续费")},
        {Column::CommissionTwin, words("佣金 净佣金")},
        {Column::OtherFee,
         words("印花税 过户费 其他费 其他费用 其他杂费 其它费 杂费 规费 交易规费 结算费 清算费 "
               "交易所清算费 附加费 经手费 证管费 交易征费 财汇局征费 监管费")},
        {Column::OrderNo, words("合同编号 合同号 委托编号 委托序号 申报序号 订单编号")},
        {Column::DealNo, words("成交编号 成交号 成交序号 流水号")},
        {Column::Market, words("交易市场 市场名称 市场代码 市场 交易所")},
        {Column::Holder, words("股东代码 股东帐户 股东账户 股东帐号 股东账号 证券账号")},
    };
    return table;
}

/// The name without blanks and without a unit in brackets: "成交金额(元)" is "成交金额".
QString plainName(const QString &headerCell)
{
    static const QRegularExpression extras(QStringLiteral("\\s|\\(.*\\)$|\\[.*\\]$"));
    return CellValue::cleaned(headerCell).remove(extras);
}

QVector<int> positionsOf(const QStringList &names, const QStringList &spellings)
{
    QVector<int> positions;
    for (const QString &spelling : spellings) {
        for (int i = 0; i < names.size(); ++i) {
            if (names[i] == spelling) {
                positions.append(i);
            }
        }
    }
    return positions;
}

} // namespace

StatementColumns::StatementColumns(const QStringList &headerCells)
{
    QStringList names;
    for (const QString &cell : headerCells) {
        names.append(plainName(cell));
    }
    for (const Spellings &row : vocabulary()) {
        const QVector<int> positions = positionsOf(names, row.names);
        if (!positions.isEmpty()) {
            m_positions[row.column] = positions;
        }
    }
}

bool StatementColumns::isHeader() const
{
    return has(Column::Price) && has(Column::Quantity) && (has(Column::Code) || has(Column::Name));
}

QString StatementColumns::cell(Column column, const QStringList &cells) const
{
    const auto found = m_positions.find(column);
    return found == m_positions.end() ? QString() : cells.value(found->second.constFirst());
}

QStringList StatementColumns::cells(Column column, const QStringList &cells) const
{
    QStringList found;
    const auto positions = m_positions.find(column);
    if (positions != m_positions.end()) {
        for (const int position : positions->second) {
            found.append(cells.value(position));
        }
    }
    return found;
}

} // namespace TradeModule
