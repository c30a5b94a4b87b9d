#include "terminal/results/ResultsView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int rowPixels = 24;
constexpr int rowsThatTellWidths = 60;

bool isText(ResultField field)
{
    return Trading::columnOf(field).kind == Trading::ResultKind::Text;
}

/// Of an amount what is most comes first, of a text what the alphabet has first; then the other way round,
/// then as the module lists.
ResultsWish nextOrder(ResultsWish wish, ResultField field)
{
    const bool fallsAtFirst = !isText(field);
    if (wish.order != field) {
        return {wish.group, field, fallsAtFirst};
    }
    return wish.isDescending == fallsAtFirst ? ResultsWish{wish.group, field, !fallsAtFirst}
                                             : ResultsWish{wish.group};
}

} // namespace

ResultsView::ResultsView(ResultsModel *model) : m_results(model)
{
    setModel(model);
    setObjectName(QStringLiteral("resultsView"));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false); // Tab leaves the table
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(rowPixels);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setResizeContentsPrecision(rowsThatTellWidths);
    m_viewSoon.setSingleShot(true);
    m_viewSoon.setInterval(0);
    connect(&m_viewSoon, &QTimer::timeout, this, &ResultsView::tellView);
    const auto soon = [this] { m_viewSoon.start(); };
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, soon);
    connect(model, &QAbstractItemModel::modelReset, this, soon);
    connect(model, &QAbstractItemModel::rowsInserted, this, soon);
    connect(model, &ResultsModel::wholeChanged, this, &ResultsView::fitColumns);
    connect(model, &QAbstractItemModel::modelReset, this, &ResultsView::showOrder);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &ResultsView::orderBy);
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex &index) { Q_EMIT placeAsked(index.row()); });
}

void ResultsView::orderBy(int column)
{
    Q_EMIT orderAsked(nextOrder(m_results->wish(), m_results->field(column)));
}

void ResultsView::showOrder()
{
    const ResultsWish &wish = m_results->wish();
    const auto &fields = Trading::fieldsOf(wish.group);
    const auto column = wish.order ? std::find(fields.begin(), fields.end(), *wish.order) : fields.end();
    horizontalHeader()->setSortIndicatorShown(column != fields.end());
    if (column != fields.end()) {
        horizontalHeader()->setSortIndicator(static_cast<int>(column - fields.begin()),
                                             wish.isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

/// Once for each list, by the rows that came first: what the user does to a column's width stays.
void ResultsView::fitColumns()
{
    if (m_fitted != m_results->wish().group && m_results->hasRow(0)) {
        m_fitted = m_results->wish().group;
        resizeColumnsToContents();
    }
}

void ResultsView::tellView()
{
    const int first = rowAt(0);
    const int last = rowAt(viewport()->height() - 1);
    const int count = m_results->rowCount({});
    if (first >= 0) {
        m_results->setView(first, last >= 0 ? last : count - 1);
    }
}

void ResultsView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    m_viewSoon.start();
}

void ResultsView::focusRows()
{
    setFocus();
    if (!currentIndex().isValid() && m_results->rowCount({}) > 0) {
        setCurrentIndex(m_results->index(0, 0));
    }
}

void ResultsView::keyPressEvent(QKeyEvent *event)
{
    const bool isOnCell = currentIndex().isValid();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isOnCell && !event->isAutoRepeat()) {
            Q_EMIT placeAsked(currentIndex().row());
        }
        return;
    case Qt::Key_Space:
        if (isOnCell && !event->isAutoRepeat()) {
            orderBy(currentIndex().column());
        }
        return;
    default:
        QTableView::keyPressEvent(event);
    }
}

} // namespace Terminal
