#include "terminal/chart/view/ChartTrail.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>

#include <cmath>
#include <utility>

namespace Terminal {

namespace {

/// Lists may lie over each other, or be closed.
void bringUp(QWidget *list)
{
    for (QWidget *part = list; part != nullptr; part = part->parentWidget()) {
        if (auto *const dock = qobject_cast<QDockWidget *>(part)) {
            dock->show();
            dock->raise();
        }
    }
    list->setFocus(Qt::OtherFocusReason);
}

} // namespace

ChartTrail::ChartTrail(ChartView *chart, Load load)
    : m_chart(chart),
      m_load(std::move(load)),
      m_action(new QAction(this))
{
    m_action->setShortcut(Qt::ALT + Qt::Key_Left);
    m_action->setEnabled(false);
    connect(m_action, &QAction::triggered, this, &ChartTrail::back);
    showTexts();
}

bool ChartTrail::Place::isOnChartOf(const Place &other) const
{
    return code == other.code && period == other.period && day == other.day;
}

bool ChartTrail::Place::isAt(const Place &other) const
{
    constexpr double same = 0.01; // of a bar
    return isOnChartOf(other) && std::abs(span.first - other.span.first) < same &&
           std::abs(span.last - other.span.last) < same;
}

ChartTrail::Place ChartTrail::here() const
{
    const ChartData &data = m_chart->data();
    const auto day = shownDay(data);
    const bool isToday = day == Trading::TradingDate::today();
    return {data.security.code, data.period, isToday ? std::nullopt : day, m_chart->span(),
            QApplication::focusWidget()};
}

bool ChartTrail::leadsOn(const Place &from) const
{
    return !m_places.empty() && m_places.back().list == from.list && m_reached.isAt(from);
}

void ChartTrail::jump(const std::function<void()> &go)
{
    const Place from = here();
    go();
    const Place reached = here();
    if (reached.isAt(from) && reached.list == from.list) {
        return;
    }
    if (!leadsOn(from)) {
        m_places.push_back(from);
    }
    m_reached = reached;
    m_action->setEnabled(true);
}

void ChartTrail::back()
{
    if (m_places.empty()) {
        return;
    }
    const Place place = m_places.back();
    m_places.pop_back();
    m_action->setEnabled(!m_places.empty());
    if (!place.isOnChartOf(here())) {
        m_load(place.code, place.period, place.day);
    }
    if (place.isOnChartOf(here())) { // its files may be gone
        m_chart->setCrosshair(std::nullopt);
        m_chart->setSpan(place.span);
    }
    if (place.list) {
        bringUp(place.list);
    }
}

void ChartTrail::showTexts()
{
    m_action->setText(tr("Back to where a list led away from"));
}

} // namespace Terminal
