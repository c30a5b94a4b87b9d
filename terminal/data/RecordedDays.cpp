#include "terminal/data/RecordedDays.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <optional>

namespace Terminal {

namespace {

/// A file system may give two changes within such a time the same time.
constexpr std::chrono::milliseconds coarseness{2000};

struct RecordedDay
{
    QString code;
    Trading::TradingDate day;
};

/// None for a file of another name.
std::optional<RecordedDay> recordedDay(const QString &file)
{
    const QString ending = QStringLiteral(".csv");
    const int separator = file.lastIndexOf(QLatin1Char('_'));
    if (separator <= 0 || !file.endsWith(ending)) {
        return std::nullopt;
    }
    const auto day =
        Trading::TradingDate::ofText(file.mid(separator + 1, file.size() - separator - 1 - ending.size()));
    return day ? std::optional(RecordedDay{file.left(separator), *day}) : std::nullopt;
}

} // namespace

std::vector<Trading::TradingDate> RecordedDays::of(const QString &code)
{
    if (!isUpToDate()) {
        list();
    }
    return m_days.value(code);
}

bool RecordedDays::isUpToDate() const
{
    const bool isSettled = m_changed.msecsTo(m_listed) > coarseness.count();
    return m_listed.isValid() && isSettled && QFileInfo(m_folder).lastModified() == m_changed;
}

void RecordedDays::list()
{
    m_changed = QFileInfo(m_folder).lastModified(); // before: what comes meanwhile is seen the next time
    m_listed = QDateTime::currentDateTimeUtc();
    m_days.clear();
    for (QDirIterator files(m_folder, QDir::Files); files.hasNext();) {
        files.next();
        if (const auto recorded = recordedDay(files.fileName())) {
            m_days[recorded->code].push_back(recorded->day);
        }
    }
    for (auto &days : m_days) {
        std::sort(days.begin(), days.end());
    }
}

} // namespace Terminal
