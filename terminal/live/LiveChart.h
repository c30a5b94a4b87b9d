#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/live/Pacer.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

namespace Terminal {

class ChartSource;
class ChartView;
class Replay;
class Today;

/// Keeps a chart in step with today: with its quotes, whoever publishes them, with a replay, and with the
/// files of the data folder, which fill what no quote told. Charts that show nothing of today are left alone.
class LiveChart : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this object.
    LiveChart(ChartView *chart, const ChartSource *source, const Today *today, const Replay *replay);

    /// True while the chart shows the minutes of the replayed day.
    bool showsReplay() const;

    /// Whether the chart is to go on with the minutes of today when they come. To be said of each chart that
    /// is loaded; not before.
    void setFollowing(bool follows) { m_follows = follows; }

Q_SIGNALS:
    /// Today has begun, and the chart, which shows the minutes of an earlier day, is to go on with it.
    void dayBegan();

private:
    void takeLoaded();
    void takeChanged(const Trading::SecurityId &security, int firstBar);
    void takeBegun(const Trading::SecurityId &security);
    void show();
    void showAnew();
    void showMinutes();
    void showSpan();
    void lookAtFiles();
    bool isShown(const Trading::SecurityId &security) const;
    bool showsMinutesOfToday() const;

    ChartView *m_chart;
    const ChartSource *m_source;
    const Today *m_today;
    bool m_follows = false;
    bool m_isAnew = false;            ///< what was shown of today counts no more
    std::optional<size_t> m_firstBar; ///< the first minute that is another one than the chart shows
    std::vector<FileStamp> m_stamps;
    Pacer m_pacer;
    QTimer m_files;
};

} // namespace Terminal
