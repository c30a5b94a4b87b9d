#pragma once

#include <QObject>

namespace TradeModule {

/// Turns SIGTERM and SIGINT into QCoreApplication::quit(), so that a serving module ends cleanly. When
/// something that hangs keeps it from that, it ends with 1 all the same, before two seconds are over. One per
/// process.
class TerminationSignals : public QObject
{
public:
    TerminationSignals();
};

} // namespace TradeModule
