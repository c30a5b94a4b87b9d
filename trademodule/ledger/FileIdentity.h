#pragma once

#include <QString>

namespace TradeModule {

/// Which file it is, whatever its name: a file that is moved keeps it, a copy has another one.
struct FileIdentity
{
    quint64 device = 0;
    quint64 number = 0; ///< on the device; 0 when there is no file

    /// Of the file that has the name now; links are followed.
    static FileIdentity of(const QString &path);

    bool isThere() const { return number != 0; }
    friend bool operator==(const FileIdentity &a, const FileIdentity &b)
    {
        return a.device == b.device && a.number == b.number;
    }
    friend bool operator!=(const FileIdentity &a, const FileIdentity &b) { return !(a == b); }
};

} // namespace TradeModule
