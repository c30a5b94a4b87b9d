#include "terminal/chart/view/ChartAccessible.h"

#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"

namespace Terminal {

namespace {

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    auto *const chart = qobject_cast<ChartView *>(object);
    return chart == nullptr ? nullptr : new ChartAccessible(chart);
}

} // namespace

ChartAccessible::ChartAccessible(ChartView *chart) : QAccessibleWidget(chart, QAccessible::Chart) {}

void ChartAccessible::install()
{
    QAccessible::installFactory(&makeInterface);
}

QString ChartAccessible::text(QAccessible::Text kind) const
{
    const auto *const chart = qobject_cast<const ChartView *>(widget());
    switch (kind) {
    case QAccessible::Name:
        return chartTitle(*chart);
    case QAccessible::Description:
        return chartSummary(*chart);
    case QAccessible::Value:
        return chart->announcement();
    default:
        return QAccessibleWidget::text(kind);
    }
}

} // namespace Terminal
