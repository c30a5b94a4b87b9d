#include "terminal/ui/ReplayBar.h"

#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/replay/Replay.h"

#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

constexpr int speeds[] = {1, 5, 10, 30, 60, 120, 300, 600};
constexpr int narrowestProgress = 220; ///< pixels

QString speedText(int speed)
{
    return QStringLiteral(u"%1×").arg(speed);
}

/// Of the bar that was completed last: the chart says that it is today's, this when it really was.
QString recordedTime(const Replay &replay)
{
    Bar bar = replay.day()[replay.completed() - 1];
    bar.date = replay.recordedDate().value().number();
    return timeText(bar);
}

QString withKey(const QString &text, const QAction &action)
{
    return QStringLiteral("%1 (%2)").arg(text, action.shortcut().toString(QKeySequence::NativeText));
}

} // namespace

ReplayBar::ReplayBar(Replay *replay, ChartView *chart, QWidget *parent)
    : KeyboardBar(parent),
      m_replay(replay),
      m_chart(chart),
      m_open(addButton(QKeySequence(Qt::CTRL + Qt::Key_R))),
      m_play(addButton(QKeySequence(Qt::Key_Space))),
      m_step(addButton(QKeySequence(Qt::Key_Period))),
      m_restart(addButton(QKeySequence(Qt::CTRL + Qt::Key_Home))),
      m_slower(addButton(QKeySequence(Qt::Key_BracketLeft))),
      m_speeds(new QComboBox),
      m_progress(new QSlider(Qt::Horizontal)),
      m_time(new QLabel)
{
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    m_open->setCheckable(true);
    addSpeeds();
    m_faster = addButton(QKeySequence(Qt::Key_BracketRight));
    addProgress();
    connect(m_open, &QAction::triggered, this, &ReplayBar::replayAsked);
    connect(m_play, &QAction::triggered, this,
            [this] { m_replay->state() == Replay::State::Playing ? m_replay->pause() : m_replay->play(); });
    connect(m_step, &QAction::triggered, replay, &Replay::step);
    connect(m_restart, &QAction::triggered, this, &ReplayBar::restartAsked);
    connect(m_slower, &QAction::triggered, this, [this] { chooseSpeed(-1); });
    connect(m_faster, &QAction::triggered, this, [this] { chooseSpeed(1); });
    connect(replay, &Replay::stateChanged, this, &ReplayBar::showState);
    connect(replay, &Replay::speedChanged, this, &ReplayBar::showSpeed);
    connect(replay, &Replay::advanced, this, &ReplayBar::showProgress);
    connect(chart, &ChartView::dataChanged, this, &ReplayBar::showState);
    showTexts();
    showState();
}

QAction *ReplayBar::addButton(const QKeySequence &key)
{
    QAction *const action = addAction(QString());
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_chart->addAction(action);
    return action;
}

void ReplayBar::addSpeeds()
{
    m_speeds->setObjectName(QStringLiteral("shortChoice"));
    for (const int speed : speeds) {
        m_speeds->addItem(speedText(speed), speed);
    }
    showSpeed();
    addWidget(m_speeds);
    connect(m_speeds, QOverload<int>::of(&QComboBox::activated), this,
            [this](int row) { m_replay->setSpeed(m_speeds->itemData(row).toInt()); });
}

void ReplayBar::addProgress()
{
    m_progress->setMinimumWidth(narrowestProgress);
    m_progress->setTracking(false);
    addWidget(m_progress);
    addWidget(m_time);
    connect(m_progress, &QSlider::valueChanged, this, &ReplayBar::playToChosenMinute);
    connect(m_progress, &QSlider::sliderReleased, this,
            [this] { playToChosenMinute(m_progress->sliderPosition()); });
}

void ReplayBar::chooseSpeed(int step)
{
    m_speeds->setCurrentIndex(std::clamp(m_speeds->currentIndex() + step, 0, m_speeds->count() - 1));
    m_replay->setSpeed(m_speeds->currentData().toInt());
}

/// A market does not go back: an earlier minute changes nothing, and the slider returns.
void ReplayBar::playToChosenMinute(int bar)
{
    const Bars &day = m_replay->day();
    if (static_cast<size_t>(bar) < day.size()) { // the day may have ended in the user's hand
        m_replay->playTo(endOf(day[static_cast<size_t>(bar)]));
    }
    showProgress();
}

void ReplayBar::showState()
{
    const Replay::State state = m_replay->state();
    const bool isOpen = state != Replay::State::Closed;
    const bool hasMore = state == Replay::State::Playing || state == Replay::State::Paused;
    setVisible(isOpen || m_chart->data().period == ChartPeriod::Minute);
    m_open->setChecked(isOpen);
    m_open->setEnabled(isOpen || m_chart->data().period == ChartPeriod::Minute);
    m_play->setEnabled(hasMore);
    m_step->setEnabled(hasMore);
    m_restart->setEnabled(isOpen);
    m_progress->setEnabled(hasMore);
    showProgress();
    showTexts();
}

/// The command line may have chosen a speed that is not in the list.
void ReplayBar::showSpeed()
{
    const int speed = m_replay->speed();
    if (m_speeds->findData(speed) < 0) {
        const auto *const faster = std::upper_bound(std::begin(speeds), std::end(speeds), speed);
        m_speeds->insertItem(static_cast<int>(faster - std::begin(speeds)), speedText(speed), speed);
    }
    m_speeds->setCurrentIndex(m_speeds->findData(speed));
}

void ReplayBar::showProgress()
{
    const bool isOpen = m_replay->state() != Replay::State::Closed && m_replay->completed() > 0;
    m_time->setText(isOpen ? recordedTime(*m_replay) : QString());
    if (m_progress->isSliderDown()) {
        return; // nothing moves under the user's hand
    }
    const QSignalBlocker quiet(m_progress);
    m_progress->setRange(0, std::max(0, static_cast<int>(m_replay->day().size()) - 1));
    m_progress->setValue(static_cast<int>(m_replay->completed()) - 1);
}

void ReplayBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    KeyboardBar::changeEvent(event);
}

void ReplayBar::showTexts()
{
    const bool plays = m_replay->state() == Replay::State::Playing;
    const struct
    {
        QAction *action;
        QString text;
        QString help;
    } rows[] = {
        {m_open, tr("Replay"), tr("Play the shown day as today, or end it")},
        {m_play, plays ? tr("Pause") : tr("Play"), plays ? tr("Pause") : tr("Play")},
        {m_step, tr("Step"), tr("One minute on")},
        {m_restart, tr("Restart"), tr("Begin the day again")},
        {m_slower, QStringLiteral(u"−"), tr("Slower")},
        {m_faster, QStringLiteral("+"), tr("Faster")},
    };
    for (const auto &row : rows) {
        row.action->setText(row.text);
        row.action->setToolTip(withKey(row.help, *row.action));
    }
    m_speeds->setAccessibleName(tr("Speed"));
    m_speeds->setToolTip(tr("How many times as fast as on the day"));
    m_progress->setAccessibleName(tr("Time of the replayed day"));
    m_progress->setToolTip(tr("Drag to the right to play up to a minute at once"));
    m_time->setToolTip(tr("The recorded minute that was played last"));
    setWindowTitle(tr("Replay"));
}

} // namespace Terminal
