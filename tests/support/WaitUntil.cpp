#include "tests/support/WaitUntil.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    QEventLoop loop;
    QTimer pulse; // for conditions that no event of this thread brings about
    pulse.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        loop.processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
