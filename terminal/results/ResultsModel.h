#pragma once

#include "terminal/chart/theme/ChartTheme.h"
#include "terminal/results/ResultPages.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace Terminal {

/// A list of results as a table: the rows that have come stand in it, the others are empty and asked for when
/// they are looked at. So a list of any length can be scrolled without waiting.
class ResultsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ResultsModel(QObject *parent = nullptr);

    /// Shows another list, or the same in another order; it is empty until its rows come.
    void setWish(const ResultsWish &wish);
    const ResultsWish &wish() const { return m_wish; }

    /// What is to be asked for next: the first rows in view that are missing; those in view again when none
    /// are, to find out whether they are still so.
    RowsAsked wanted() const;
    /// True while rows in view have not come.
    bool isMissing() const;
    /// Takes rows; those of another list are left alone.
    void take(const ResultsPart &part);

    /// The rows that are looked at, from the first to the last.
    void setView(int first, int last);

    /// Of the whole list, as last told.
    const ResultsPart &whole() const { return m_whole; }

    ResultField field(int column) const { return m_fields[static_cast<size_t>(column)]; }
    /// The text of a cell as the module tells it; empty while its row has not come.
    QString cell(int row, ResultField field) const;
    bool hasRow(int row) const { return m_pages.row(row) != nullptr; }

    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);
    /// Shows all texts anew, in the language that is chosen now.
    void retranslate();

    int rowCount(const QModelIndex &parent) const override;
    int columnCount(const QModelIndex &parent) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// Rows in view are missing.
    void rowsWanted();
    /// Count, sum or the way to reckon costs were told.
    void wholeChanged();

private:
    void setCount(qint64 count);
    void refresh();
    QVariant colour(ResultField field, const QString &text) const;

    ResultsWish m_wish;
    std::vector<ResultField> m_fields;
    ResultPages m_pages;
    ResultsPart m_whole;
    int m_count = 0;
    int m_firstInView = 0;
    int m_lastInView = 0;
    ChartTheme m_theme;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
