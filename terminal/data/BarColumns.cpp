#include "terminal/data/BarColumns.h"

#include "terminal/data/HeaderName.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarColumns", source);
}

struct ColumnNames
{
    BarColumn column;
    const char *names; ///< as headerName() gives them; the first one is the own form's
};

/// A column that tells the unit in its name has it beside it: 总手 is a volume in lots.
constexpr ColumnNames columnNames[] = {
    {BarColumn::Date, "date tradedate tradingdate tradingday day dt 日期 交易日期 交易日 成交日期 trddt"},
    {BarColumn::Time,
     "time datetime tradetime tradingtime timestamp timetag bartime eob 时间 交易时间 成交时间 "
     "日期时间 时刻"},
    {BarColumn::Open, "open openprice openpx o 开盘 开盘价 今开 今开盘 开盘价格 opnprc"},
    {BarColumn::High, "high highprice highest highestprice highpx max h 最高 高 最高价 最高价格 hiprc"},
    {BarColumn::Low, "low lowprice lowest lowestprice lowpx min l 最低 低 最低价 最低价格 loprc"},
    {BarColumn::Close,
     "close closeprice closingprice closepx closelast c 收盘 收盘价 今收 今收盘 收盘价格 clsprc"},
    {BarColumn::Volume, "volume vol v tradevolume tradevol tradingvolume turnovervolume turnovervol 成交量 "
                        "交易量 成交股数 成交数量 总手 总成交量 dnshrtrd"},
    {BarColumn::Amount,
     "amount amt money tradeamount tradingamount tradevalue value turnovervalue totalturnover "
     "成交额 成交金额 金额 总金额 总成交额 dnvaltrd"},
    {BarColumn::PreviousClose,
     "preclose precloseprice prevclose prevcloseprice previousclose lastclose 前收盘 "
     "前收盘价 前收 前收价 昨收 昨收价 昨收盘 昨收盘价 上日收盘"},
    {BarColumn::Adjustment, "adjustflag adjust adjusttype fq fqtype 复权状态 复权类型 复权"},
    {BarColumn::IsTraded, "tradestatus tradingstatus istrading 交易状态"},
    {BarColumn::IsPaused, "paused issuspended suspended 是否停牌"},
    {BarColumn::Code,
     "code tscode symbol ticker secid seccode securitycode stockcode windcode thscode instrument "
     "instrumentid orderbookid sid stkcd 代码 股票代码 证券代码 证券 股票 合约代码 基金代码"},
    {BarColumn::Name, "name secname secshortname stockname 名称 股票名称 证券名称 股票简称 证券简称 简称"},
};

std::optional<BarColumn> columnOfName(const QString &plain)
{
    static const QHash<QString, BarColumn> columns = [] {
        QHash<QString, BarColumn> byName;
        for (const ColumnNames &row : columnNames) {
            for (const QString &name : QString::fromUtf8(row.names).split(QLatin1Char(' '))) {
                byName.insert(name, row.column);
            }
        }
        return byName;
    }();
    const auto column = columns.constFind(plain);
    return column == columns.constEnd() ? std::nullopt : std::optional(*column);
}

QString ownName(BarColumn column)
{
    const auto *const row =
        std::find_if(std::begin(columnNames), std::end(columnNames),
                     [column](const ColumnNames &names) { return names.column == column; });
    return QString::fromUtf8(row->names).section(QLatin1Char(' '), 0, 0);
}

constexpr BarColumn prices[] = {BarColumn::Open, BarColumn::High, BarColumn::Low, BarColumn::Close};

} // namespace

QString BarColumns::take(const Cells &header)
{
    for (std::size_t place = 0; place < header.size(); ++place) {
        const std::string_view cell = header[place];
        const QString error = takeCell(place, QString::fromUtf8(cell.data(), static_cast<int>(cell.size())));
        if (!error.isEmpty()) {
            return error;
        }
    }
    return {};
}

QString BarColumns::takeCell(std::size_t place, const QString &cell)
{
    const auto [plain, unit] = headerName(cell);
    const bool isFirstLine = place >= count();
    if (isFirstLine) {
        m_names.append(cell);
    }
    if (has(BarColumn::Volume) && this->place(BarColumn::Volume) == place && !m_namedUnit) {
        m_namedUnit = volumeUnitOf(cell); // a line of units below the names
    }
    const auto column = isUnknown(place) ? columnOfName(plain) : std::nullopt;
    if (!column) {
        return {};
    }
    if (*column == BarColumn::Volume) {
        m_namedUnit = plain == QStringLiteral(u"总手") ? VolumeUnit::Lots : volumeUnitOf(unit);
    }
    return set(*column, place, cell);
}

QString BarColumns::set(BarColumn column, std::size_t place, const QString &cell)
{
    if (column == BarColumn::Code) {
        m_codePlaces.push_back(place);
        return {};
    }
    if (has(column)) {
        return text("the columns \"%1\" and \"%2\" have the same meaning; delete one of them")
            .arg(header(column), cell);
    }
    name(place, column);
    return {};
}

bool BarColumns::isUnknown(std::size_t place) const
{
    return std::find(m_places.begin(), m_places.end(), std::optional(place)) == m_places.end() &&
           std::find(m_codePlaces.begin(), m_codePlaces.end(), place) == m_codePlaces.end();
}

QStringList BarColumns::unknown() const
{
    QStringList names;
    for (std::size_t place = 0; place < count(); ++place) {
        const QString &name = m_names.at(static_cast<int>(place));
        if (isUnknown(place) && !name.isEmpty()) {
            names.append(name);
        }
    }
    return names;
}

int BarColumns::priceCount() const
{
    return static_cast<int>(std::count_if(std::begin(prices), std::end(prices),
                                          [this](BarColumn column) { return has(column); }));
}

QStringList BarColumns::missing() const
{
    QStringList names;
    for (const BarColumn column :
         {BarColumn::Open, BarColumn::High, BarColumn::Low, BarColumn::Close, BarColumn::Volume}) {
        if (!has(column)) {
            names.append(ownName(column));
        }
    }
    return names;
}

bool BarColumns::isOwnForm() const
{
    return std::all_of(m_names.begin(), m_names.end(), [](const QString &name) {
        const auto column = columnOfName(name);
        return column && *column <= BarColumn::Volume && name == ownName(*column);
    });
}

} // namespace Terminal
