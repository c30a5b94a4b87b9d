#pragma once

#include "terminal/chart/view/ChartView.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QAction;

namespace Terminal {

/// The way back from where a row of a list has led: to the chart, the place on it and the list of before.
///
/// Rows of one list that lead on from each other are one step, unless the chart was moved between them.
class ChartTrail : public QObject
{
    Q_OBJECT

public:
    using Load =
        std::function<void(const QString &code, ChartPeriod, std::optional<Trading::TradingDate> day)>;

    /// `load` shows another chart. `chart` must outlive this object.
    ChartTrail(ChartView *chart, Load load);

    /// Has `go` move the chart or the keyboard, and remembers where they were, if they move. Not to be called
    /// by `go`.
    void jump(const std::function<void()> &go);

    /// Shows again what the last jump left. Nothing happens where there is none.
    void back();

    /// Goes back; enabled where there is a way.
    QAction *action() const { return m_action; }
    void showTexts();

private:
    struct Place
    {
        QString code;
        ChartPeriod period = ChartPeriod::Day;
        std::optional<Trading::TradingDate> day; ///< of minutes that are not today's
        BarSpan span;
        QPointer<QWidget> list; ///< had the keyboard

        bool isOnChartOf(const Place &other) const;
        bool isAt(const Place &other) const;
    };

    Place here() const;
    bool leadsOn(const Place &from) const;

    ChartView *m_chart;
    Load m_load;
    QAction *m_action;
    std::vector<Place> m_places; ///< the latest at the end
    Place m_reached;             ///< by the last jump
};

} // namespace Terminal
