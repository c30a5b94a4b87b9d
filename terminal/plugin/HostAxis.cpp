#include "terminal/plugin/HostAxis.h"

#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HiddenAmounts.h"
#include "terminal/plugin/HostRecords.h"

#include <QStringList>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int otherChart = 0;

QStringList rowsOf(const char **lines)
{
    QStringList rows;
    for (; lines != nullptr && *lines != nullptr; ++lines) {
        rows.append(QString::fromUtf8(*lines));
    }
    return rows;
}

} // namespace

HostAxis::HostAxis(ChartView *chart, UserPrompts *prompts, const QByteArray &screenId, QObject *parent)
    : QObject(parent),
      m_chart(chart),
      m_prompts(prompts),
      m_screenId(screenId)
{
}

int HostAxis::chartMode()
{
    const ChartData &data = m_chart->data();
    if (data.period != ChartPeriod::Minute || data.bars.empty()) {
        return otherChart;
    }
    return isTodaysChart(data) ? Korvane::TodayChart : Korvane::PastDayChart;
}

bool HostAxis::visiblePriceRange(double &low, double &high)
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    if (!geometry.hasScale()) {
        return false;
    }
    low = geometry.lowPrice;
    high = geometry.highPrice;
    return true;
}

const char *HostAxis::screenId()
{
    return m_screenId.constData();
}

double HostAxis::markerSize()
{
    return seriesGlyphHeight;
}

void HostAxis::updateObject(Korvane::IChartObject *object)
{
    Q_EMIT updateRequested(object);
}

int HostAxis::popupMenu(const char **lines, void * /*reserved*/)
{
    QStringList rows = rowsOf(lines);
    if (rows.isEmpty()) {
        return -1;
    }
    if (m_hidesAmounts) {
        std::transform(rows.begin(), rows.end(), rows.begin(), withoutAmounts);
    }
    return m_prompts->choose(rows, m_chart->canvas()->mapToGlobal(m_listPlace.toPoint()));
}

void HostAxis::showMessage(const char *text)
{
    m_prompts->show(QString::fromUtf8(text));
}

bool HostAxis::confirmBox(const char *text)
{
    return m_prompts->confirm(QString::fromUtf8(text));
}

double HostAxis::barToX(int bar)
{
    return m_chart->chartGeometry().barToX(bar);
}

double HostAxis::priceToY(double price, int /*unused*/, int /*unused*/)
{
    return m_chart->chartGeometry().priceToY(price);
}

int HostAxis::xToBar(double x)
{
    return m_chart->barAt(x);
}

void HostAxis::barAt(int bar, Korvane::AnalyData &out)
{
    const Bars &bars = m_chart->data().bars;
    if (bar >= 0 && static_cast<size_t>(bar) < bars.size()) {
        out = hostBar(bars[static_cast<size_t>(bar)]);
    }
}

} // namespace Terminal
