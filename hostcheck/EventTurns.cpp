#include "hostcheck/EventTurns.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <atomic>

namespace HostCheck {

namespace {

std::atomic<long> turns{0};

/// The one whose turns are counted; an application that follows another one brings its own.
QPointer<QAbstractEventDispatcher> &watched()
{
    static QPointer<QAbstractEventDispatcher> dispatcher;
    return dispatcher;
}

} // namespace

void EventTurns::watch()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    QAbstractEventDispatcher *const dispatcher =
        application == nullptr ? nullptr : QAbstractEventDispatcher::instance(application->thread());
    if (dispatcher == nullptr || dispatcher == watched()) {
        return;
    }
    watched() = dispatcher;
    const auto countTurn = [] { ++turns; };
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, dispatcher, countTurn,
                     Qt::DirectConnection);
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, dispatcher, countTurn,
                     Qt::DirectConnection);
}

long EventTurns::count()
{
    return turns;
}

} // namespace HostCheck
