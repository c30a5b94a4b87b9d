#include "terminal/watch/WatchView.h"

#include <QKeyEvent>
#include <QMenu>

namespace Terminal {

WatchView::WatchView(WatchTable *watched)
    : RecordView(watched, static_cast<int>(WatchColumn::Name)),
      m_watched(watched)
{
    setObjectName(QStringLiteral("watchView"));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &WatchView::openMenu);
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex &row) {
        Q_EMIT chartAsked(m_watched->record(row.row()).security.code);
    });
}

void WatchView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Delete) {
        RecordView::keyPressEvent(event);
    } else if (!event->isAutoRepeat() && currentIndex().isValid()) {
        Q_EMIT removalAsked(m_watched->record(currentIndex().row()).security.code);
    }
}

/// The menu is for one security, wherever its row is when the user has chosen.
void WatchView::openMenu(const QPoint &place)
{
    const QModelIndex row = indexAt(place);
    if (!row.isValid()) {
        return;
    }
    const QString code = m_watched->record(row.row()).security.code;
    QMenu menu(this);
    QAction *const charting = menu.addAction(tr("Show its chart"));
    charting->setShortcut(Qt::Key_Return);
    QAction *const removing = menu.addAction(tr("Take it off the list"));
    removing->setShortcut(Qt::Key_Delete);
    const QAction *const chosen = menu.exec(viewport()->mapToGlobal(place));
    if (chosen == charting) {
        Q_EMIT chartAsked(code);
    } else if (chosen == removing) {
        Q_EMIT removalAsked(code);
    }
}

} // namespace Terminal
