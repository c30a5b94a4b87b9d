#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/ui/KeyboardBar.h"
#include "trading/TradingDate.h"

#include <optional>
#include <vector>

class QAction;
class QActionGroup;
class QComboBox;

namespace Terminal {

class SecurityBox;

/// The bar above the chart that says which one it is: security, period and day, and whether amounts of the
/// account are hidden. It tells what the user chooses and shows what it is told; it changes no chart.
class ChartBar : public KeyboardBar
{
    Q_OBJECT

public:
    /// Offers these securities.
    ChartBar(const Securities &securities, bool hidesAmounts, QWidget *parent = nullptr);

    /// Offers these securities instead.
    void setSecurities(const Securities &securities);

    /// Shows the choices that lead to this chart; `days` are the recorded ones of its security.
    void showChart(const ChartData &shown, const std::vector<Trading::TradingDate> &days);

    bool hidesAmounts() const;

    /// Takes the keyboard to look for a security, with its first letters.
    void beginSearch(const QString &typed);

Q_SIGNALS:
    void hidingToggled(bool hidesAmounts);
    /// The user has left the choice of the security.
    void left();
    /// Another chart is wanted; `day` is nothing for the last recorded one.
    void chartAsked(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addSecurities(const Securities &securities);
    void addPeriods();
    void addDays();
    QString code() const;
    void showRecorded(const ChartData &shown);
    void showTexts();

    ChartPeriod m_period = ChartPeriod::Day;
    SecurityBox *m_securities;
    QActionGroup *m_periods;
    QComboBox *m_days;
    QAction *m_daysAction = nullptr;
    QAction *m_hiding;
};

} // namespace Terminal
