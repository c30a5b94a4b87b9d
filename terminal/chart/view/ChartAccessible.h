#pragma once

#include <QAccessibleWidget>

namespace Terminal {

class ChartView;

/// The chart for screen readers: what it shows in a few words, made when it is asked for.
class ChartAccessible : public QAccessibleWidget
{
public:
    explicit ChartAccessible(ChartView *chart);

    /// Has Qt use this class for charts. May be called more than once.
    static void install();

    /// Name: the security and the period. Description: the summary. Value: the mark that the keyboard is on.
    QString text(QAccessible::Text kind) const override;
};

} // namespace Terminal
