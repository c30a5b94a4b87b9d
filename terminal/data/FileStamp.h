#pragma once

#include <QDateTime>
#include <QString>

namespace Terminal {

/// What tells that a file has become another one: whether it is there, its size and its time.
struct FileStamp
{
    bool isThere = false;
    qint64 size = 0;
    QDateTime changed{};

    static FileStamp of(const QString &path);

    friend bool operator==(const FileStamp &a, const FileStamp &b)
    {
        return a.isThere == b.isThere && a.size == b.size && a.changed == b.changed;
    }
    friend bool operator!=(const FileStamp &a, const FileStamp &b) { return !(a == b); }
};

} // namespace Terminal
