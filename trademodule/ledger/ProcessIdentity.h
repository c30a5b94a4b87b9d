#pragma once

#include <QString>

namespace TradeModule {

/// Which process it is, on whichever machine: its number alone may belong to another one later.
struct ProcessIdentity
{
    QString host;
    qint64 number = 0;
    QString start; ///< when it began, as its machine counts; empty when that cannot be known

    static ProcessIdentity own();
    /// Of the process that has this number on this machine now.
    static ProcessIdentity of(qint64 number);

    /// True while this very process runs on this machine.
    bool isRunningHere() const;
    /// Ends it, frozen or not, when it runs on this machine; false when it does not, or may not be ended.
    bool end() const;
};

/// True while a process of this number runs on this machine, whichever it is.
bool isProcessHere(qint64 number);

} // namespace TradeModule
