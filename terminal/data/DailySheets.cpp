#include "terminal/data/DailySheets.h"

#include "terminal/data/BarFile.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>

namespace Terminal {

namespace {

constexpr std::size_t mostKept = 4;

/// A file system may give two changes within such a time the same time.
constexpr std::chrono::milliseconds coarseness{2000};

} // namespace

DailySheets::Sheet DailySheets::read(const QString &path, const QString &code)
{
    const auto known =
        std::find_if(m_kept.begin(), m_kept.end(), [&path](const Kept &kept) { return kept.path == path; });
    if (known != m_kept.end() && isUpToDate(*known)) {
        return known->sheet;
    }
    if (known != m_kept.end()) {
        m_kept.erase(known);
    }
    m_kept.push_front(readNow(path, code));
    m_kept.resize(std::min(m_kept.size(), mostKept));
    return m_kept.front().sheet;
}

/// Looks at the file before: what comes meanwhile is seen the next time.
DailySheets::Kept DailySheets::readNow(const QString &path, const QString &code)
{
    return {path, FileStamp::of(path), QFileInfo(path).metadataChangeTime(), QDateTime::currentDateTimeUtc(),
            std::make_shared<const Loaded<BarSheet>>(readDailySheet(path, code))};
}

/// What could not be read is read again.
bool DailySheets::isUpToDate(const Kept &kept)
{
    const bool isSettled = kept.touched.msecsTo(kept.read) > coarseness.count();
    return *kept.sheet && isSettled && FileStamp::of(kept.path) == kept.stamp &&
           QFileInfo(kept.path).metadataChangeTime() == kept.touched;
}

} // namespace Terminal
