#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/snapshot/AnswerWatch.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <chrono>

class QWidget;

namespace Terminal {

class OrderDesk;
class ResultsDesk;
class TradesDesk;
class ScreenAnswers;
class StatementActions;

/// What a picture is taken of. Widget, answers, desk and actions must outlive the snapshot.
struct Scene
{
    QWidget *window = nullptr;
    ScreenAnswers *answers = nullptr;    ///< that come for it
    ChartData chart;                     ///< what the window shows
    QStringList overlays;                ///< words of overlayKinds
    OrderDesk *desk = nullptr;           ///< whose orders the window shows
    StatementActions *actions = nullptr; ///< that its prices go by
    ResultsDesk *results = nullptr;      ///< whose results it shows; null: it shows none
    TradesDesk *trades = nullptr;        ///< whose trades it shows; null: it shows none
};

/// Waits until every overlay of a window and the panel of orders, when it is shown, have their data and
/// writes the picture.
class Snapshot : public QObject
{
    Q_OBJECT

public:
    /// Into `file`, or not at all after `timeout`.
    Snapshot(const Scene &scene, const QString &file, std::chrono::seconds timeout);

    /// From here on the time runs that the answers have.
    void start();

    /// Listens on the bus instance of `address`, see ScreenAnswers.
    void listen(const QString &address);

    /// Writes the picture at once, without overlays to wait for.
    void finish();

    /// The scene is set: nothing but answers is waited for from here on.
    void takeWhenComplete();

    /// What stands in the way besides the answers, for the message of a time-out.
    void setHindrance(const QString &hindrance) { m_hindrance = hindrance; }

    /// Counts a repaint that an overlay of the kind has asked for.
    void noteUpdate(const OverlayKind *kind) { m_watch.noteUpdate(kind); }

Q_SIGNALS:
    /// Once: answers are heard from now on, so that they may be asked for.
    void listening();

    /// The window is to show what it knows: its picture is taken next.
    void aboutToTake();

    /// The picture is written, or the text says why not: not in time, or an answer was wrong.
    void finished(const QString &error);

private:
    /// Where the snapshot is; it only goes on to later stages.
    enum class Stage { Deaf, Listening, Due, Finished };

    void noteListening();
    void refuseWrong(const QStringList &faults);
    QStringList missing() const;
    void checkProgress();
    void giveUp();

    QWidget *m_window;
    ScreenAnswers *m_answers;
    OrderDesk *m_desk;
    StatementActions *m_actions;
    ResultsDesk *m_results;
    TradesDesk *m_trades;
    QString m_file;
    AnswerWatch m_watch;
    QTimer m_timeout;
    QString m_hindrance;
    Stage m_stage = Stage::Deaf;
};

} // namespace Terminal
