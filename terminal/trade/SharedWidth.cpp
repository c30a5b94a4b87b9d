#include "terminal/trade/SharedWidth.h"

#include "terminal/trade/RecordView.h"

#include <QSplitter>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace Terminal {

SharedWidth::SharedWidth(QWidget *parent) : QWidget(parent), m_tabs(new QTabBar), m_splitter(new QSplitter)
{
    m_tabs->setObjectName(QStringLiteral("panelTabs"));
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);
    m_tabs->hide();
    m_splitter->setChildrenCollapsible(false);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_splitter, 1);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] { m_isSharedByHand = true; });
    connect(m_tabs, &QTabBar::currentChanged, this, &SharedWidth::shareByNeed);
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
    m_splitter->addWidget(column);
    m_tabs->addTab(QString());
}

void SharedWidth::setTitle(int number, const QString &title)
{
    m_tabs->setTabText(number, title);
    QStringList titles;
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        titles.append(m_tabs->tabText(tab));
    }
    m_tabs->setAccessibleName(titles.join(QStringLiteral(", ")));
}

void SharedWidth::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    shareByNeed();
}

void SharedWidth::shareByNeed()
{
    QList<int> needed;
    for (const RecordView *const table : m_tables) {
        needed.append(table->neededWidth());
    }
    const int all = std::accumulate(needed.begin(), needed.end(), m_splitter->handleWidth());
    showOneOrAll(all > width());
    const QList<int> widths = m_splitter->sizes();
    const bool isCut =
        std::mismatch(widths.begin(), widths.end(), needed.begin(), std::greater_equal<int>()).first !=
        widths.end();
    if (isCut && all <= width() && !m_isSharedByHand) {
        m_splitter->setSizes(needed);
    }
    for (RecordView *const table : m_tables) {
        table->fitColumns();
    }
}

void SharedWidth::showOneOrAll(bool showsOne)
{
    m_tabs->setVisible(showsOne);
    for (int number = 0; number < m_splitter->count(); ++number) {
        m_splitter->widget(number)->setVisible(!showsOne || number == m_tabs->currentIndex());
    }
}

void SharedWidth::bringUp(const RecordView *table)
{
    const auto place = std::find(m_tables.begin(), m_tables.end(), table);
    m_tabs->setCurrentIndex(static_cast<int>(place - m_tables.begin()));
}

QByteArray SharedWidth::sharing() const
{
    return m_isSharedByHand ? m_splitter->saveState() : QByteArray();
}

void SharedWidth::restoreSharing(const QByteArray &sharing)
{
    m_isSharedByHand = m_splitter->restoreState(sharing) || m_isSharedByHand;
}

} // namespace Terminal
