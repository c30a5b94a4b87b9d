#include "terminal/results/ResultsModel.h"

#include "terminal/results/ResultTitles.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"

#include <algorithm>
#include <limits>

namespace Terminal {

namespace {

using Trading::columnOf;
using Trading::fieldsOf;
using Trading::ResultKind;

bool isText(ResultField field)
{
    return columnOf(field).kind == ResultKind::Text;
}

} // namespace

ResultsModel::ResultsModel(QObject *parent) : QAbstractTableModel(parent), m_fields(fieldsOf(m_wish.group)) {}

void ResultsModel::setWish(const ResultsWish &wish)
{
    beginResetModel();
    const bool isOtherList = wish.group != m_wish.group;
    m_wish = wish;
    m_fields = fieldsOf(wish.group);
    m_pages.clear();
    m_count = isOtherList ? 0 : m_count; // another order has as many rows
    m_firstInView = 0;
    m_lastInView = 0;
    endResetModel();
}

RowsAsked ResultsModel::wanted() const
{
    const qint64 missing = m_pages.missing(m_firstInView, m_lastInView);
    const qint64 first =
        missing >= 0 ? missing : m_firstInView / ResultPages::rowsOfPage * ResultPages::rowsOfPage;
    return {m_wish, first, static_cast<int>(ResultPages::rowsOfPage)};
}

bool ResultsModel::isMissing() const
{
    return m_count > 0 && m_pages.missing(m_firstInView, m_lastInView) >= 0;
}

void ResultsModel::take(const ResultsPart &part)
{
    if (!(part.wish == m_wish)) {
        return;
    }
    const bool isOther = m_pages.take(part);
    setCount(part.count);
    m_whole = part;
    m_whole.rows.clear();
    if (isOther) {
        refresh();
    } else if (!part.rows.empty() && part.first < m_count) {
        const int last = static_cast<int>(part.first + static_cast<qint64>(part.rows.size())) - 1;
        Q_EMIT dataChanged(index(static_cast<int>(part.first), 0),
                           index(std::min(last, m_count - 1), columnCount({}) - 1));
    }
    Q_EMIT wholeChanged();
    if (isMissing()) {
        Q_EMIT rowsWanted();
    }
}

void ResultsModel::setCount(qint64 count)
{
    const int wanted = static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max()));
    if (wanted > m_count) {
        beginInsertRows({}, m_count, wanted - 1);
        m_count = wanted;
        endInsertRows();
    } else if (wanted < m_count) {
        beginRemoveRows({}, wanted, m_count - 1);
        m_count = wanted;
        endRemoveRows();
    }
    m_firstInView = std::clamp(m_firstInView, 0, std::max(0, m_count - 1));
    m_lastInView = std::clamp(m_lastInView, 0, std::max(0, m_count - 1));
}

void ResultsModel::setView(int first, int last)
{
    m_firstInView = std::max(0, first);
    m_lastInView = std::clamp(last, m_firstInView, std::max(m_firstInView, m_count - 1));
    if (isMissing()) {
        Q_EMIT rowsWanted();
    }
}

QString ResultsModel::cell(int row, ResultField field) const
{
    const ResultRow *const texts = m_pages.row(row);
    const auto place = std::find(m_fields.begin(), m_fields.end(), field);
    return texts == nullptr || place == m_fields.end()
               ? QString()
               : texts->value(static_cast<int>(place - m_fields.begin()));
}

void ResultsModel::setTheme(const ChartTheme &theme)
{
    m_theme = theme;
    refresh();
}

void ResultsModel::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    refresh();
}

void ResultsModel::retranslate()
{
    refresh();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount({}) - 1);
}

void ResultsModel::refresh()
{
    if (m_count > 0) {
        Q_EMIT dataChanged(index(0, 0), index(m_count - 1, columnCount({}) - 1));
    }
}

int ResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int ResultsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_fields.size());
}

QVariant ResultsModel::colour(ResultField field, const QString &text) const
{
    const ResultKind kind = columnOf(field).kind;
    const bool isGain = kind == ResultKind::Gain || kind == ResultKind::Percent;
    const double gain = text.toDouble();
    if (!isGain || m_hidesAmounts || gain == 0) {
        return {};
    }
    return gain > 0 ? m_theme.rise : m_theme.fall;
}

QVariant ResultsModel::data(const QModelIndex &index, int role) const
{
    const ResultField shown = field(index.column());
    switch (role) {
    case Qt::DisplayRole: {
        const QString text = cell(index.row(), shown);
        const bool isHidden = m_hidesAmounts && isAmount(columnOf(shown).kind) && !text.isEmpty();
        return plainText(shownAmount(shownCell(shown, text), isHidden));
    }
    case Qt::TextAlignmentRole:
        return static_cast<int>((isText(shown) ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return colour(shown, cell(index.row(), shown));
    default:
        return {};
    }
}

QVariant ResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return titleOf(field(section));
    case Qt::TextAlignmentRole:
        return static_cast<int>((isText(field(section)) ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    default:
        return {};
    }
}

} // namespace Terminal
