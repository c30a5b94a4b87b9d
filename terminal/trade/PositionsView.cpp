#include "terminal/trade/PositionsView.h"

#include <QKeyEvent>
#include <QMenu>

namespace Terminal {

namespace {

constexpr auto tradesKey = Qt::Key_F5;

} // namespace

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

/// The key of the window's list of trades is here one for those of the row.
bool PositionsView::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && currentIndex().isValid() &&
        static_cast<QKeyEvent *>(event)->key() == tradesKey) {
        event->accept();
        return true;
    }
    return RecordView::event(event);
}

void PositionsView::keyPressEvent(QKeyEvent *event)
{
    const bool isOurs = event->key() == Qt::Key_Delete || event->key() == tradesKey;
    if (!isOurs || !currentIndex().isValid()) {
        RecordView::keyPressEvent(event);
        return;
    }
    if (event->isAutoRepeat()) {
        return;
    }
    const Position position = m_positions->record(currentIndex().row()).position;
    if (event->key() == tradesKey) {
        Q_EMIT tradesAsked(position.security);
    } else {
        askToClose(position);
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
    QAction *const trading = menu.addAction(tr("Show its trades"));
    trading->setShortcut(tradesKey);
    QAction *const closing = menu.addAction(tr("Close this position…"));
    closing->setShortcut(Qt::Key_Delete);
    closing->setEnabled(position.sellable > 0);
    const QAction *const chosen = menu.exec(viewport()->mapToGlobal(place));
    if (chosen == charting) {
        Q_EMIT chartAsked(position.security);
    } else if (chosen == trading) {
        Q_EMIT tradesAsked(position.security);
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
