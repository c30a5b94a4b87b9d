#pragma once

#include "terminal/ui/KeyboardBar.h"

class QComboBox;
class QLabel;
class QSlider;

namespace Terminal {

class ChartView;
class Replay;

/// The controls of the replay: begin and end it, play, pause, step, begin again, speed, and how far the
/// day has come. Shown with minute charts and while a day is replayed.
///
/// Space plays and pauses and "." steps while the chart or this bar has the focus; elsewhere they stay
/// what they are, e.g. in a form beside the chart.
class ReplayBar : public KeyboardBar
{
    Q_OBJECT

public:
    /// `replay` and `chart` must outlive the bar.
    ReplayBar(Replay *replay, ChartView *chart, QWidget *parent = nullptr);

    /// Shows how the replay stands.
    void showState();

Q_SIGNALS:
    /// The user wants to have the shown day replayed, or the replay ended.
    void replayAsked(bool on);
    /// The user wants the day to begin again.
    void restartAsked();

protected:
    void changeEvent(QEvent *event) override;

private:
    QAction *addButton(const QKeySequence &key);
    void addSpeeds();
    void addProgress();
    void chooseSpeed(int step);
    void playToChosenMinute(int bar);
    void showSpeed();
    void showProgress();
    void showTexts();

    Replay *m_replay;
    ChartView *m_chart;
    QAction *m_open;
    QAction *m_play;
    QAction *m_step;
    QAction *m_restart;
    QAction *m_slower;
    QAction *m_faster;
    QComboBox *m_speeds;
    QSlider *m_progress;
    QLabel *m_time;
};

} // namespace Terminal
