#pragma once

#include "terminal/chart/theme/ChartTheme.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"

#include <QAbstractTableModel>

#include <algorithm>
#include <optional>
#include <vector>

namespace Terminal {

/// The role of cells whose tip tells something else than their text.
constexpr int hasOwnTip = Qt::UserRole;

/// Records as the rows of a table, by a list of columns. `Name` is an enum of the columns, from the left.
template <typename Record, typename Name>
class RecordTable : public QAbstractTableModel
{
public:
    struct Column
    {
        Name name;
        QString (*title)(); ///< translated
        Qt::Alignment alignment;
        QString (*text)(const Record &record);
        /// None: coloured as all text.
        QColor (*colour)(const Record &record, const ChartTheme &theme) = nullptr;
        bool isAmount = false; ///< of the user's own shares or money
        /// What the tip of the cell tells, cut or not; none: the whole of a text that is cut.
        QString (*tip)(const Record &record) = nullptr;
    };

    /// Tells whether two records are the same row at different times.
    using SameRow = bool (*)(const Record &one, const Record &other);

    RecordTable(std::vector<Column> columns, SameRow isSameRow)
        : m_columns(std::move(columns)),
          m_isSameRow(isSameRow)
    {
        for (size_t place = 0; place < m_columns.size(); ++place) {
            Q_ASSERT(m_columns[place].name == static_cast<Name>(place));
        }
    }

    const std::vector<Record> &records() const { return m_records; }
    const Record &record(int row) const { return m_records[static_cast<size_t>(row)]; }

    /// Shows these rows; selections outlive changes of rows and new rows at the top.
    void setRecords(std::vector<Record> records)
    {
        const size_t count = m_records.size();
        const auto isUnchangedTail =
            records.size() >= count && std::equal(m_records.begin(), m_records.end(),
                                                  records.end() - static_cast<long>(count), m_isSameRow);
        if (!isUnchangedTail) {
            beginResetModel();
            m_records = std::move(records);
            endResetModel();
            return;
        }
        if (records.size() > count) {
            beginInsertRows({}, 0, static_cast<int>(records.size() - count) - 1);
            m_records = std::move(records);
            endInsertRows();
        } else {
            m_records = std::move(records);
        }
        refresh();
    }

    void setTheme(const ChartTheme &theme)
    {
        m_theme = theme;
        refresh();
    }

    void setAmountsHidden(bool hidden)
    {
        m_hidesAmounts = hidden;
        refresh();
    }

    /// Shows all texts anew, in the language that is chosen now.
    void retranslate()
    {
        refresh();
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount({}) - 1);
    }

    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_records.size());
    }

    int columnCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
    }

    QModelIndex cell(int row, Name name) const { return index(row, static_cast<int>(name)); }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const Column &shown = column(index.column());
        const Record &row = record(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return plainText(shownAmount(shown.text(row), shown.isAmount && m_hidesAmounts));
        case Qt::ToolTipRole:
            return plainTip(shown.tip ? shown.tip(row) : data(index, Qt::DisplayRole).toString());
        case hasOwnTip:
            return shown.tip != nullptr;
        case Qt::TextAlignmentRole:
            return static_cast<int>(shown.alignment | Qt::AlignVCenter);
        case Qt::ForegroundRole:
            return shown.colour && !(shown.isAmount && m_hidesAmounts) ? shown.colour(row, m_theme)
                                                                       : QVariant();
        default:
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal) {
            return {};
        }
        switch (role) {
        case Qt::DisplayRole:
            return column(section).title();
        case Qt::TextAlignmentRole:
            return static_cast<int>(column(section).alignment | Qt::AlignVCenter);
        default:
            return {};
        }
    }

private:
    const Column &column(int number) const { return m_columns[static_cast<size_t>(number)]; }

    void refresh()
    {
        if (!m_records.empty()) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount({}) - 1, columnCount({}) - 1));
        }
    }

    const std::vector<Column> m_columns;
    const SameRow m_isSameRow;
    std::vector<Record> m_records;
    ChartTheme m_theme;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
