#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace Terminal {

/// Has work done that is asked for again and again: at once after a pause, and then no more often than at an
/// interval, so that a flood of requests costs no more than a few.
class Pacer : public QObject
{
    Q_OBJECT

public:
    explicit Pacer(std::chrono::milliseconds interval);

    /// Has due() follow, from the event loop; once, however often it is asked for until then.
    void ask();
    /// What was asked for has been done already.
    void cancel() { m_soon.stop(); }

Q_SIGNALS:
    void due();

private:
    std::chrono::milliseconds m_interval;
    QElapsedTimer m_sinceDue;
    QTimer m_soon;
};

} // namespace Terminal
