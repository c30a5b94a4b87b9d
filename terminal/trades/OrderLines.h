#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/trade/TradeRecords.h"

#include <qwt_plot_item.h>

#include <QRectF>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace Terminal {

class ChartView;

/// Where the tags of working orders stand, from top to bottom: each at the height of its price, as far as
/// none lies over another and all are in the price pane.
std::vector<double> tagTops(const std::vector<double> &wished, double height, double top, double bottom);

/// The working orders of today as lines at their prices, each with a tag at the right edge: side, what is
/// left, price and state. A price beyond the scale has a tag at its edge and no line.
class OrderLines : public QwtPlotItem
{
public:
    /// A line that follows the pointer.
    struct Dragged
    {
        QString number;
        double price = 0;
    };

    /// What is asked at each repaint.
    struct Place
    {
        std::function<bool()> isShown;     ///< whether anything is drawn
        std::function<double()> takenRoom; ///< pixels at the right edge that others use
    };

    /// `chart` is borrowed.
    OrderLines(ChartView *chart, Place place);

    /// Those of them that can still be cancelled are shown.
    void setOrders(const OrderRecords &orders);
    void setDragged(std::optional<Dragged> dragged);
    void setAmountsHidden(bool hidden);

    const OrderRecords &orders() const { return m_orders; }
    /// The working order of this number; null for none.
    const OrderRecord *find(const QString &number) const;

    /// The order whose tag or line is at a pixel of the canvas; null for none. Valid until setOrders().
    const OrderRecord *orderAt(const QPointF &position) const;

    /// The height of an order's line, or of the edge of the scale that is next to it.
    double heightOf(const OrderRecord &order) const;

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    struct Tag
    {
        const OrderRecord *order;
        double price;
        QString text;
        double height; ///< of the line
        QRectF box;
        bool isOnScale;
    };

    std::vector<Tag> tags() const;
    double priceOf(const OrderRecord &order) const;
    QString textOf(const OrderRecord &order) const;
    void drawTag(QPainter *painter, const Tag &tag) const;

    ChartView *m_chart;
    Place m_place;
    OrderRecords m_orders;
    std::optional<Dragged> m_dragged;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
