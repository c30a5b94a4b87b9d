#pragma once

#include "trademodule/ledger/FileIdentity.h"

namespace TradeModule {

/// By which is seen that a file was written, or replaced, since.
struct FileState
{
    FileIdentity identity;
    qint64 size = 0;
    qint64 changed = 0; ///< when, in nanoseconds

    /// Of the file that has the name now; that of no file when there is none.
    static FileState of(const QString &path);

    friend bool operator==(const FileState &a, const FileState &b)
    {
        return a.identity == b.identity && a.size == b.size && a.changed == b.changed;
    }
    friend bool operator!=(const FileState &a, const FileState &b) { return !(a == b); }
};

} // namespace TradeModule
