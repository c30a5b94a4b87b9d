#pragma once

#include "terminal/data/Bar.h"
#include "terminal/trade/LastPrice.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace Terminal {

class ChartSource;
class OrderDesk;
class Replay;

/// What each security cost last: by the replay for the one that is replayed, else by a quote of the market on
/// the bus or by the latest close of the data folder, whichever is of the later day.
///
/// Closes are read when they are first asked for, a few at a time from the event loop, and kept: the price is
/// not known until then.
class LastPrices : public QObject
{
    Q_OBJECT

public:
    /// `source`, `replay` and `desk` must outlive this object. To be made before the desk joins the bus.
    LastPrices(const ChartSource *source, const Replay *replay, OrderDesk *desk);

    /// Nothing while no price is known.
    std::optional<LastPrice> of(const Security &security);

    /// Reads the close of `code` again: its files may have grown.
    void readAnew(const QString &code);

    /// Forgets the closes: files of many securities may be others. They are read when they are asked for.
    void forgetCloses();

    /// Reads at once what was asked for, for a picture.
    void readNow();

Q_SIGNALS:
    /// Some prices are others now.
    void changed();

private:
    std::optional<LastPrice> replayed() const;
    std::optional<LastPrice> closeOf(const QString &code);
    void readForATurn();
    void readClose(const QString &code);
    void takeQuote(const QJsonObject &quote);

    const ChartSource *m_source;
    const Replay *m_replay;
    QHash<Trading::SecurityId, LastPrice> m_quotes;
    QHash<QString, std::optional<LastPrice>> m_closes; ///< by code, those that were read
    QStringList m_unread;                              ///< codes that were asked for
    QTimer m_reading;
};

} // namespace Terminal
