#pragma once

#include "terminal/snapshot/AnswerWatch.h"

#include <QTimer>

namespace Terminal {

class MainWindow;
struct TerminalOptions;

/// Waits until every overlay of a window and the panel of orders, when it is shown, have their data and
/// writes the picture.
class Snapshot : public QObject
{
    Q_OBJECT

public:
    /// `window` must outlive the snapshot.
    Snapshot(MainWindow *window, const TerminalOptions &options, QObject *parent);

    /// From here on the time runs that the answers have.
    void start();

    /// Listens on the bus instance of `address`, see AnswerWatch.
    void listen(const QString &address);

    /// True when answers are heard.
    bool isListening() const { return m_listening; }

    /// Writes the picture at once, without overlays to wait for.
    void finish();

    /// The scene is set: nothing but answers is waited for from here on.
    void takeWhenComplete();

    /// What stands in the way besides the answers, for the message of a time-out.
    void setHindrance(const QString &hindrance) { m_hindrance = hindrance; }

    /// Counts a repaint that an overlay of the kind has asked for.
    void noteUpdate(const OverlayKind *kind) { m_watch.noteUpdate(kind); }

Q_SIGNALS:
    /// Answers would be heard now: overlays may be started.
    void listening();

    /// The picture is written, or the text says why not.
    void finished(const QString &error);

private:
    QStringList missing() const;
    void checkProgress();
    void giveUp();

    MainWindow *m_window;
    QString m_file;
    AnswerWatch m_watch;
    QTimer m_timeout;
    QString m_hindrance;
    bool m_listening = false;
    bool m_isDue = false; ///< the scene is set
    bool m_finished = false;
};

} // namespace Terminal
