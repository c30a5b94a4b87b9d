#include "terminal/trade/SharedWidth.h"

#include "terminal/trade/RecordView.h"

#include <QVBoxLayout>

namespace Terminal {

SharedWidth::SharedWidth()
{
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] { m_isSharedByHand = true; });
}

void SharedWidth::add(QWidget *caption, RecordView *table)
{
    caption->setObjectName(QStringLiteral("panelCaption"));
    auto *const column = new QWidget;
    auto *const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(caption);
    layout->addWidget(table, 1);
    m_tables.push_back(table);
    addWidget(column);
}

void SharedWidth::resizeEvent(QResizeEvent *event)
{
    QSplitter::resizeEvent(event);
    shareByNeed();
}

void SharedWidth::shareByNeed()
{
    const QList<int> widths = sizes();
    QList<int> needed;
    bool isCut = false;
    for (const RecordView *const table : m_tables) {
        needed.append(table->neededWidth());
        isCut |= widths.at(needed.size() - 1) < needed.back();
    }
    if (isCut && !m_isSharedByHand) {
        setSizes(needed);
    }
}

QByteArray SharedWidth::sharing() const
{
    return m_isSharedByHand ? saveState() : QByteArray();
}

void SharedWidth::restoreSharing(const QByteArray &sharing)
{
    m_isSharedByHand = restoreState(sharing) || m_isSharedByHand;
}

} // namespace Terminal
