#include "terminal/chart/view/ChartSummary.h"

#include "terminal/chart/axes/BarSpan.h"
#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartView.h"

#include <QCoreApplication>

#include <array>

namespace Terminal {

namespace {

/// What a mark tells, whatever its shape and however far an order is dealt: the kinds of trades, then the
/// sides of orders.
constexpr const char *groupTexts[] = {
    QT_TRANSLATE_NOOP("ChartSummary", "buys %1"),        QT_TRANSLATE_NOOP("ChartSummary", "sells %1"),
    QT_TRANSLATE_NOOP("ChartSummary", "both %1"),        QT_TRANSLATE_NOOP("ChartSummary", "buy orders %1"),
    QT_TRANSLATE_NOOP("ChartSummary", "sell orders %1"),
};
constexpr size_t groupCount = std::size(groupTexts);

size_t groupOf(GlyphNumber glyph)
{
    constexpr size_t ofBuyOrders = 3;
    return isOrderGlyph(glyph) ? ofBuyOrders + static_cast<size_t>(orderKindOf(glyph).side)
                               : static_cast<size_t>(seriesStyleOf(glyph).kind);
}

QString text(const char *source)
{
    return QCoreApplication::translate("ChartSummary", source);
}

QString rangeText(const ChartData &data, const BarRange &range)
{
    return text("%1 to %2, %3 bars")
        .arg(timeText(data.told(data.bars[range.first])), timeText(data.told(data.bars[range.end - 1])))
        .arg(range.end - range.first);
}

QString lastBarText(const ChartData &data)
{
    const Bar &last = data.bars.back();
    return text("last %1: close %2, change %3")
        .arg(timeText(data.told(last)), priceText(last.close, data.priceDecimals),
             changeText(changeAt(data.bars.size() - 1, data)));
}

} // namespace

double changeAt(size_t bar, const ChartData &data)
{
    const double before = data.priceBefore(bar);
    return before == 0 ? 0 : (data.bars[bar].close - before) / before;
}

QString spanTitle(const ChartData &data)
{
    const QString view = viewTitle(data.view);
    return view.isEmpty() ? periodTitle(data.period)
                          : QStringLiteral(u"%1 · %2").arg(periodTitle(data.period), view);
}

QString chartTitle(const ChartView &chart)
{
    const ChartData &shown = chart.data();
    return shown.bars.empty()
               ? QString()
               : QStringLiteral("%1 %2, %3").arg(shown.security.name, shown.security.code, spanTitle(shown));
}

QString marksSummary(const std::vector<ClickableMark> &marks)
{
    std::array<int, groupCount> counts{};
    for (const ClickableMark &mark : marks) {
        counts[groupOf(mark.glyph)] += mark.count;
    }
    QStringList texts;
    for (size_t group = 0; group < groupCount; ++group) {
        if (counts[group] > 0) {
            texts.append(text(groupTexts[group]).arg(counts[group]));
        }
    }
    return texts.join(QStringLiteral(", "));
}

QString markText(const ClickableMark &mark, const ChartView &chart)
{
    const auto bar = static_cast<size_t>(chart.barAt(mark.box.center().x()));
    return QStringLiteral("%1, %2").arg(marksSummary({mark}),
                                        timeText(chart.data().told(chart.data().bars[bar])));
}

QString chartSummary(const ChartView &chart)
{
    const BarRange range = barsInView(chart.span(), chart.data().bars.size());
    if (range.first == range.end) {
        return {};
    }
    QStringList parts = {chartTitle(chart), rangeText(chart.data(), range), lastBarText(chart.data())};
    const QString overlays = chart.overlaySummary();
    if (!overlays.isEmpty()) {
        parts.append(overlays);
    }
    return parts.join(QStringLiteral("; "));
}

} // namespace Terminal
