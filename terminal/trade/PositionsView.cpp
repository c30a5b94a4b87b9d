#include "terminal/trade/PositionsView.h"

#include <QKeyEvent>
#include <QMenu>

namespace Terminal {

PositionsView::PositionsView(PositionsTable *positions)
    : RecordView(positions, static_cast<int>(PositionColumn::Name)),
      m_positions(positions)
{
    setObjectName(QStringLiteral("positionsView"));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &PositionsView::openMenu);
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex &row) {
        Q_EMIT chartAsked(m_positions->record(row.row()).position.security);
    });
}

void PositionsView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Delete) {
        RecordView::keyPressEvent(event);
    } else if (!event->isAutoRepeat() && currentIndex().isValid()) {
        askToClose(m_positions->record(currentIndex().row()).position);
    }
}

/// The menu is for one position, wherever its row is when the user has chosen.
void PositionsView::openMenu(const QPoint &place)
{
    const QModelIndex row = indexAt(place);
    if (!row.isValid()) {
        return;
    }
    const Position position = m_positions->record(row.row()).position;
    QMenu menu(this);
    QAction *const charting = menu.addAction(tr("Show its chart"));
    charting->setShortcut(Qt::Key_Return);
    QAction *const closing = menu.addAction(tr("Close this position…"));
    closing->setShortcut(Qt::Key_Delete);
    closing->setEnabled(position.sellable > 0);
    const QAction *const chosen = menu.exec(viewport()->mapToGlobal(place));
    if (chosen == charting) {
        Q_EMIT chartAsked(position.security);
    } else if (chosen == closing) {
        askToClose(position);
    }
}

void PositionsView::askToClose(const Position &position)
{
    if (position.sellable > 0) {
        Q_EMIT closeAsked(position);
    }
}

} // namespace Terminal
