#pragma once

#include "terminal/data/Bar.h"
#include "terminal/live/Pacer.h"
#include "terminal/trade/LastPrice.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace Terminal {

class ChartSource;
class Today;

/// What each security cost last: by today's quotes, of the market or of the replay that stands in its place,
/// else by the latest close of the data folder.
///
/// Closes are read when they are first asked for, a few at a time from the event loop, and kept: the price is
/// not known until then.
class LastPrices : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object.
    LastPrices(const ChartSource *source, const Today *today);

    /// Nothing while no price is known.
    std::optional<LastPrice> of(const Security &security);

    /// Reads the close of `code` again: its files may have grown.
    void readAnew(const QString &code);

    /// Forgets the closes: files of many securities may be others. They are read when they are asked for.
    void forgetCloses();

    /// Reads at once what was asked for, for a picture.
    void readNow();

Q_SIGNALS:
    /// Prices that were asked for are others now. Comes a few times a second at most, however many quotes do.
    void changed();

private:
    std::optional<LastPrice> quoted(const Trading::SecurityId &security) const;
    std::optional<LastPrice> closeOf(const QString &code);
    void readForATurn();
    void readClose(const QString &code);
    void takeChanged(const Trading::SecurityId &security);

    const ChartSource *m_source;
    const Today *m_today;
    QSet<Trading::SecurityId> m_asked;
    QHash<QString, std::optional<LastPrice>> m_closes; ///< by code, those that were read
    QStringList m_unread;                              ///< codes that were asked for
    QTimer m_reading;
    Pacer m_pacer;
};

} // namespace Terminal
