#include "terminal/trades/OrderLines.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeTables.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double aboveMarks = 18; // and below overlays
constexpr double tagHeight = 20;
constexpr double tagGap = 2;
constexpr double padding = 7;
constexpr double radius = 3;
constexpr double grip = 3; ///< how near to a line is on it, in pixels
constexpr int fontPixels = 12;

QFont tagFont()
{
    QFont font;
    font.setPixelSize(fontPixels);
    return font;
}

QColor colourOf(const OrderRecord &order, const ChartTheme &theme)
{
    return order.side == Direction::Buy ? theme.rise : theme.fall;
}

} // namespace

std::vector<double> tagTops(const std::vector<double> &wished, double height, double top, double bottom)
{
    std::vector<double> tops = wished;
    double free = top;
    for (double &place : tops) {
        place = std::max(place, free);
        free = place + height + tagGap;
    }
    double limit = bottom - height;
    for (auto place = tops.rbegin(); place != tops.rend(); ++place) {
        *place = std::min(*place, limit);
        limit = *place - height - tagGap;
    }
    return tops;
}

OrderLines::OrderLines(ChartView *chart, Place place) : m_chart(chart), m_place(std::move(place))
{
    setItemAttribute(QwtPlotItem::Legend, false);
    setYAxis(QwtPlot::yRight);
    setZ(aboveMarks);
}

void OrderLines::setOrders(const OrderRecords &orders)
{
    m_orders.clear();
    std::copy_if(orders.begin(), orders.end(), std::back_inserter(m_orders), isCancellable);
    std::stable_sort(m_orders.begin(), m_orders.end(), [](const OrderRecord &one, const OrderRecord &other) {
        return one.price > other.price;
    });
    m_chart->replot();
}

void OrderLines::setDragged(std::optional<Dragged> dragged)
{
    m_dragged = std::move(dragged);
    m_chart->replot();
}

void OrderLines::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_chart->replot();
}

const OrderRecord *OrderLines::find(const QString &number) const
{
    const auto found = std::find_if(m_orders.begin(), m_orders.end(),
                                    [&number](const OrderRecord &order) { return order.number == number; });
    return found == m_orders.end() ? nullptr : &*found;
}

double OrderLines::priceOf(const OrderRecord &order) const
{
    return m_dragged && m_dragged->number == order.number ? m_dragged->price : order.price;
}

double OrderLines::heightOf(const OrderRecord &order) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    return geometry.priceToY(std::clamp(priceOf(order), geometry.lowPrice, geometry.highPrice));
}

QString OrderLines::textOf(const OrderRecord &order) const
{
    const QString price = tickText(order.security, order.price);
    if (m_dragged && m_dragged->number == order.number) {
        return QStringLiteral(u"%1 → %2").arg(price, tickText(order.security, m_dragged->price));
    }
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const QString arrow = order.price > geometry.highPrice  ? QStringLiteral(u"↑ ")
                          : order.price < geometry.lowPrice ? QStringLiteral(u"↓ ")
                                                            : QString();
    const QString rest = shownAmount(QString::number(order.quantity - order.dealt), m_hidesAmounts);
    return QStringLiteral(u"%1%2 %3 × %4 · %5")
        .arg(arrow, sideText(order.side), rest, price, plainText(statusText(order)));
}

/// The orders are from the highest price down, and so are their tags.
std::vector<OrderLines::Tag> OrderLines::tags() const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const QFontMetricsF metrics(tagFont());
    const double right = geometry.right - m_place.takenRoom();
    std::vector<Tag> all;
    for (const OrderRecord &order : m_orders) {
        const double price = priceOf(order);
        const QString text = textOf(order);
        const double width = std::ceil(metrics.horizontalAdvance(text)) + 2 * padding;
        all.push_back({&order, price, text, heightOf(order),
                       QRectF(std::floor(right - width), 0, width, tagHeight),
                       price >= geometry.lowPrice && price <= geometry.highPrice});
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Tag &one, const Tag &other) { return one.height < other.height; });
    std::vector<double> wished;
    std::transform(all.begin(), all.end(), std::back_inserter(wished),
                   [](const Tag &tag) { return std::floor(tag.height - tagHeight / 2); });
    const std::vector<double> tops = tagTops(wished, tagHeight, geometry.top, geometry.bottom);
    for (size_t place = 0; place < all.size(); ++place) {
        all[place].box.moveTop(tops[place]);
    }
    return all;
}

const OrderRecord *OrderLines::orderAt(const QPointF &position) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    if (m_orders.empty() || !geometry.hasScale() || !m_place.isShown()) {
        return nullptr;
    }
    const OrderRecord *onLine = nullptr;
    for (const Tag &tag : tags()) {
        if (tag.box.contains(position)) {
            return tag.order;
        }
        if (tag.isOnScale && std::abs(position.y() - tag.height) <= grip) {
            onLine = tag.order;
        }
    }
    return onLine;
}

void OrderLines::drawTag(QPainter *painter, const Tag &tag) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const ChartTheme &theme = m_chart->theme();
    const QColor colour = colourOf(*tag.order, theme);
    const bool isDragged = m_dragged && m_dragged->number == tag.order->number;
    if (tag.isOnScale) {
        painter->setPen(QPen(colour, isDragged ? 2 : 1, isDragged ? Qt::SolidLine : Qt::DashLine));
        painter->drawLine(QPointF(geometry.left, tag.height), QPointF(tag.box.left(), tag.height));
        painter->drawLine(QPointF(tag.box.left() - padding, tag.height),
                          QPointF(tag.box.left(), tag.box.center().y()));
    }
    painter->setPen(QPen(colour, isDragged ? 2 : 1.4));
    painter->setBrush(theme.surface);
    painter->drawRoundedRect(tag.box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter->setPen(theme.text);
    painter->setFont(tagFont());
    painter->drawText(tag.box, Qt::AlignCenter | Qt::TextDontClip, tag.text);
}

void OrderLines::draw(QPainter *painter, const QwtScaleMap & /*xMap*/, const QwtScaleMap & /*yMap*/,
                      const QRectF & /*canvasRect*/) const
{
    if (m_orders.empty() || !m_chart->chartGeometry().hasScale() || !m_place.isShown()) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    for (const Tag &tag : tags()) {
        drawTag(painter, tag);
    }
    painter->restore();
}

} // namespace Terminal
