// A terminal as far as the bus is concerned: serves the bus of the directory given to it, tells the
// broker's process number, and stays until it is killed.

#include "endpoint/LocalBroker.h"

#include <QCoreApplication>

#include <cstdio>

using LocalCommunication::LocalBroker;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    LocalBroker broker;
    QObject::connect(&broker, &LocalBroker::stateChanged, &broker, [&broker](LocalBroker::State state) {
        if (state == LocalBroker::State::Running) {
            std::printf("%lld\n", static_cast<long long>(broker.processId()));
            std::fflush(stdout);
        }
    });
    broker.start(QCoreApplication::arguments().value(1));
    return QCoreApplication::exec();
}
