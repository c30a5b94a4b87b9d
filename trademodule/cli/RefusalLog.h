#pragma once

#include <QHash>
#include <QString>
#include <QTimer>

#include <functional>
#include <utility>

namespace TradeModule {

/// Refusals on their way to the log. Each is told, but one that comes again within a minute, as a chart's
/// that asks the same again, is counted and told with its number when the minute is over; beyond a hundred
/// different ones a minute the others are counted together, and a long one is cut. A program gone wild fills
/// neither disk nor memory.
class RefusalLog
{
public:
    static constexpr int mostLines = 100;
    static constexpr int mostCharacters = 500; ///< of one refusal

    explicit RefusalLog(std::function<void(const QString &)> tell);

    void add(const QString &refusal);
    /// What the minute has counted; called by itself when it is over.
    void tellCounts();

private:
    const std::function<void(const QString &)> m_tell;
    QHash<QString, int> m_repeats; ///< of those told in this minute
    int m_others = 0;
    QTimer m_minute;
};

} // namespace TradeModule
