#pragma once

#include "terminal/data/BarSheet.h"
#include "terminal/data/FileStamp.h"

#include <QDateTime>
#include <QString>

#include <list>
#include <memory>

namespace Terminal {

/// The files of daily bars that were read last. One is read once, and again when it has changed: a chart, its
/// ticket and its lists ask for the same one in a row, and each looks at the file itself.
class DailySheets
{
public:
    using Sheet = std::shared_ptr<const Loaded<BarSheet>>;

    /// See readDailySheet(). The file belongs to this security and to no other.
    Sheet read(const QString &path, const QString &code);

private:
    struct Kept
    {
        QString path;
        FileStamp stamp;
        QDateTime touched; ///< as the file system says, which no program can turn back
        QDateTime read;
        Sheet sheet;
    };

    static Kept readNow(const QString &path, const QString &code);
    static bool isUpToDate(const Kept &kept);

    std::list<Kept> m_kept; ///< last read first
};

} // namespace Terminal
