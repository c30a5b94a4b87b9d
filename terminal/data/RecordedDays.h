#pragma once

#include "trading/TradingDate.h"

#include <QDateTime>
#include <QHash>
#include <QString>

#include <vector>

namespace Terminal {

/// The days of which a folder has minutes: files `<code>_<yyyymmdd>.csv`. The folder is listed once, and
/// again when it has changed: it may hold a hundred thousand files.
class RecordedDays
{
public:
    RecordedDays() = default;
    explicit RecordedDays(QString folder) : m_folder(std::move(folder)) {}

    /// Of a security, oldest first.
    std::vector<Trading::TradingDate> of(const QString &code);

private:
    bool isUpToDate() const;
    void list();

    QString m_folder;
    QDateTime m_changed; ///< when the folder was changed last, as it was listed
    QDateTime m_listed;
    QHash<QString, std::vector<Trading::TradingDate>> m_days;
};

} // namespace Terminal
