#pragma once

#include "terminal/results/ResultsModel.h"

#include <QTableView>
#include <QTimer>

namespace Terminal {

/// The rows of a list of results. A click on a column's title, or Space, orders the list by the column; a
/// click on a row, or Enter, asks for its place on the chart.
class ResultsView : public QTableView
{
    Q_OBJECT

public:
    /// `model` must outlive the view.
    explicit ResultsView(ResultsModel *model);

    /// Takes the keyboard, to the first row at first.
    void focusRows();

Q_SIGNALS:
    void placeAsked(int row);
    /// The list is to be in another order.
    void orderAsked(const ResultsWish &wish);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void tellView();
    void fitColumns();
    void showOrder();
    void orderBy(int column);

    ResultsModel *m_results;
    QTimer m_viewSoon;
    std::optional<ResultGroup> m_fitted; ///< the list that the columns are as wide as
};

} // namespace Terminal
