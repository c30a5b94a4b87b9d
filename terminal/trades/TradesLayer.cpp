#include "terminal/trades/TradesLayer.h"

#include "terminal/chart/view/ChartView.h"

#include <QPainter>

#include <algorithm>
#include <tuple>

namespace Terminal {

namespace {

constexpr double overCandles = 15; // overlays draw above it
constexpr double ringMargin = 4;
constexpr double ringWidth = 2;
constexpr double placeRadius = 3.5;
constexpr int pathAlpha = 170;

auto keyOf(const ChartGeometry &geometry)
{
    return std::make_tuple(geometry.span.first, geometry.span.last, geometry.left, geometry.right,
                           geometry.lowPrice, geometry.highPrice, geometry.top, geometry.bottom);
}

QPointF pixelOf(const OrderPath::Point &point, const ChartGeometry &geometry)
{
    return {geometry.barToX(point.bar), geometry.priceToY(point.price)};
}

/// A line from the order's place to each of its trades, and a ring at the place.
void paintPath(QPainter *painter, const OrderPath &path, const ChartGeometry &geometry, const QColor &colour,
               bool isSelected)
{
    const QPointF placed = pixelOf(path.placed, geometry);
    QColor lineColour = colour;
    lineColour.setAlpha(pathAlpha);
    painter->setPen(QPen(isSelected ? colour : lineColour, isSelected ? ringWidth : 1));
    painter->setBrush(Qt::NoBrush);
    for (const OrderPath::Point &point : path.dealt) {
        painter->drawLine(placed, pixelOf(point, geometry));
    }
    painter->setPen(QPen(colour, isSelected ? ringWidth : 1.2));
    painter->drawEllipse(placed, placeRadius, placeRadius);
}

} // namespace

TradesLayer::TradesLayer(ChartView *chart, std::function<bool()> isShown)
    : m_chart(chart),
      m_isShown(std::move(isShown))
{
    setItemAttribute(QwtPlotItem::Legend, false);
    setYAxis(QwtPlot::yRight);
    setZ(overCandles);
}

bool TradesLayer::View::operator==(const View &other) const
{
    return keyOf(geometry) == keyOf(other.geometry);
}

void TradesLayer::setTrades(Trades trades)
{
    m_trades = std::move(trades);
    m_selected.clear(); // their numbers are others now
    takeChart();
}

void TradesLayer::setOrders(OrderRecords orders)
{
    m_orders = std::move(orders);
    reckonPaths();
}

void TradesLayer::takeChart()
{
    m_places = TradePlaces(m_chart->data(), m_trades);
    m_view.reset();
    reckonPaths();
}

/// Only what happened in these bars, or later, may have another place.
void TradesLayer::takeGrown(int first)
{
    const Bars &bars = m_chart->data().bars;
    const bool isBefore = m_trades.empty() || m_trades.back().day < dayOf(bars[static_cast<size_t>(first)]);
    if (isBefore && m_orders.empty()) {
        return;
    }
    takeChart();
}

void TradesLayer::reckonPaths()
{
    m_paths = pathsOf(m_orders, m_chart->data(), m_trades, m_places);
    m_chart->replot();
}

void TradesLayer::setSelected(const std::vector<size_t> &trades)
{
    m_selected = trades;
    std::sort(m_selected.begin(), m_selected.end());
    m_chart->replot();
}

void TradesLayer::setSelectedOrders(const OrderRecords &orders)
{
    QSet<QString> numbers;
    for (const OrderRecord &order : orders) {
        numbers.insert(order.number);
    }
    if (numbers != m_selectedOrders) {
        m_selectedOrders = numbers;
        m_chart->replot();
    }
}

const TradeMarkList &TradesLayer::marks() const
{
    const View now{m_chart->chartGeometry()};
    if (!m_view || !(*m_view == now)) {
        m_marks = marksInView(m_places, m_trades, now.geometry, m_chart->data().bars.size());
        m_view = now;
    }
    return m_marks;
}

/// The last one is drawn uppermost.
const TradeMark *TradesLayer::markAt(const QPointF &position) const
{
    if (!m_isShown()) {
        return nullptr;
    }
    const TradeMarkList &all = marks();
    const auto found = std::find_if(all.rbegin(), all.rend(), [&position](const TradeMark &mark) {
        return mark.box().contains(position);
    });
    return found == all.rend() ? nullptr : &*found;
}

bool TradesLayer::isSelected(const TradeMark &mark) const
{
    return !m_selected.empty() && std::any_of(mark.trades.begin(), mark.trades.end(), [this](size_t trade) {
        return std::binary_search(m_selected.begin(), m_selected.end(), trade);
    });
}

void TradesLayer::drawPaths(QPainter *painter) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const ChartTheme &theme = m_chart->theme();
    for (const OrderPath &path : m_paths) {
        const bool selected = m_selectedOrders.contains(path.number);
        const QColor colour = path.side == Direction::Buy ? theme.rise : theme.fall;
        paintPath(painter, path, geometry, selected ? theme.accent : colour, selected);
    }
}

void TradesLayer::draw(QPainter *painter, const QwtScaleMap & /*xMap*/, const QwtScaleMap & /*yMap*/,
                       const QRectF & /*canvasRect*/) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    if (!geometry.hasScale() || !m_isShown()) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipRect(
        QRectF(QPointF(geometry.left, geometry.top), QPointF(geometry.right, geometry.bottom)),
        Qt::IntersectClip);
    drawPaths(painter);
    for (const TradeMark &mark : marks()) {
        TradeGlyphs::paint(painter, mark.box(), mark.kind, mark.count(), m_chart->theme());
        if (isSelected(mark)) {
            painter->setBrush(Qt::NoBrush);
            painter->setPen(QPen(m_chart->theme().accent, ringWidth));
            painter->drawRoundedRect(mark.box().adjusted(-ringMargin, -ringMargin, ringMargin, ringMargin),
                                     ringMargin, ringMargin);
        }
    }
    painter->restore();
}

} // namespace Terminal
