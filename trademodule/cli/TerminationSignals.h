#pragma once

#include <QObject>

namespace TradeModule {

/// Turns SIGTERM and SIGINT into QCoreApplication::quit(), so that a serving module ends cleanly. One
/// per process.
class TerminationSignals : public QObject
{
public:
    TerminationSignals();
};

} // namespace TradeModule
