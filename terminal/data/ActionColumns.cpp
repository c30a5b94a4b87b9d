#include "terminal/data/ActionColumns.h"

#include "terminal/data/HeaderName.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ActionColumns", source);
}

struct ColumnNames
{
    ActionColumn column;
    int shares;        ///< that its figures are for
    const char *names; ///< as headerName() gives them; the first one of a column is the own form's
};

constexpr int perShare = 1;
constexpr int perTen = 10;

constexpr ColumnNames columnNames[] = {
    {ActionColumn::ExDate, perShare,
     "exdate exday exdividenddate exrightsdate 除权除息日 除权除息日期 除权日 除息日 除权日期 除息日期"},
    {ActionColumn::Dividend, perShare,
     "dividend dividendpershare cashdividend 每股派息 每股派现 每股红利 每股现金红利 每股分红 每股股利"},
    {ActionColumn::Dividend, perTen,
     "dividendpertenshares dividendper10shares 每10股派息 每10股派 每10股派现 每10股派现金 每10股红利 "
     "每10股现金红利 每10股分红 每十股派息 每十股派现 10派 10股派息"},
    {ActionColumn::Bonus, perShare, "bonus bonuspershare 每股送股 每股送转 每股送转股 每股红股"},
    {ActionColumn::Bonus, perTen,
     "bonuspertenshares bonusper10shares 每10股送股 每10股送 每10股送转 每10股送转股 每10股红股 "
     "每十股送股 每十股送转 10送 10股送股"},
    {ActionColumn::FromReserves, perShare, "fromreserves 每股转增 每股转增股"},
    {ActionColumn::FromReserves, perTen, "每10股转增 每10股转 每10股转增股 每十股转增 10转 10股转增"},
    {ActionColumn::Split, perShare, "split splitratio 拆分比例 折算比例 份额折算比例"},
    {ActionColumn::Rights, perShare, "rights rightspershare 每股配股 每股配"},
    {ActionColumn::Rights, perTen,
     "rightspertenshares rightsper10shares 每10股配股 每10股配 每十股配股 10配 10股配股"},
    {ActionColumn::RightsPrice, perShare, "rightsprice 配股价 配股价格"},
    {ActionColumn::Code, perShare, "code symbol tscode 代码 证券代码 股票代码 基金代码"},
    {ActionColumn::Ignored, perShare,
     "name note remark announced recorddate paydate 名称 证券名称 股票名称 证券简称 股票简称 简称 备注 说明 "
     "公告日 公告日期 股权登记日 登记日 派息日 红利发放日 红股上市日 除权缴款日 进度 方案进度 报告期 年度"},
};

/// Names that files have for figures of one share, and others for figures of ten.
constexpr const char *namesOfEither = "派息 派现 分红 红利 现金分红 送股 红股 转增 送转 送转股 配股 配股比例 "
                                      "送股比例 转增比例 派息比例 送转总比例 现金分红比例";

bool contains(const char *names, const QString &name)
{
    return QString::fromUtf8(names).split(QLatin1Char(' ')).contains(name);
}

const ColumnNames *columnOf(const QString &plain)
{
    const auto *const row =
        std::find_if(std::begin(columnNames), std::end(columnNames),
                     [&plain](const ColumnNames &candidate) { return contains(candidate.names, plain); });
    return row == std::end(columnNames) ? nullptr : row;
}

QString toText(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

constexpr const char *ownHeader = "exdate,dividend,bonus,split,rights,rightsprice";

} // namespace

bool ActionColumns::isHeader(const Cells &cells)
{
    return std::any_of(cells.begin(), cells.end(), [](std::string_view cell) {
        const ColumnNames *const row = columnOf(headerName(toText(cell)).plain);
        return row != nullptr && row->column == ActionColumn::ExDate;
    });
}

QString ActionColumns::take(const Cells &header)
{
    m_count = header.size();
    for (std::size_t place = 0; place < m_count; ++place) {
        const QString problem = takeCell(place, toText(header[place]));
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    const bool tellsAnything = std::any_of(
        m_found.begin() + index(ActionColumn::Dividend), m_found.begin() + index(ActionColumn::RightsPrice),
        [](const std::optional<Found> &found) { return found.has_value(); });
    return tellsAnything ? QString()
                         : text("no column tells what happened; known are %1").arg(QLatin1String(ownHeader));
}

QString ActionColumns::takeCell(std::size_t place, const QString &cell)
{
    const QString plain = headerName(cell).plain;
    const ColumnNames *const row = columnOf(plain);
    if (row == nullptr) {
        return contains(namesOfEither, plain)
                   ? text("the column \"%1\" does not say for how many shares it is: call it 每股%1 or "
                          "每10股%1")
                         .arg(cell)
                   : text("the column \"%1\" is not known; known are %2").arg(cell, QLatin1String(ownHeader));
    }
    std::optional<Found> &found = m_found[index(row->column)];
    if (found && row->column != ActionColumn::Ignored) {
        return text("the columns \"%1\" and \"%2\" have the same meaning; delete one of them")
            .arg(found->header, cell);
    }
    found = Found{place, row->shares, cell};
    return {};
}

} // namespace Terminal
