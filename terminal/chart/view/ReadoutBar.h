#pragma once

#include <QLocale>
#include <QWidget>

namespace Terminal {

class ChartView;

/// The line above the chart: what is shown, and the numbers of the bar under the crosshair, else of
/// the last one.
class ReadoutBar : public QWidget
{
    Q_OBJECT

public:
    explicit ReadoutBar(ChartView *chart, QWidget *parent = nullptr);

    void setLanguage(QLocale::Language language);

    /// The same in one sentence, for those who do not see it.
    QString summary() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showBar(int bar);
    size_t shownBar() const;
    QString shownPrice(double price) const;
    int paintTitle(QPainter *painter, int x) const;
    void paintNumbers(QPainter *painter, int x) const;

    ChartView *m_chart;
    QLocale::Language m_language = QLocale::Chinese;
    int m_bar = -1;
};

} // namespace Terminal
