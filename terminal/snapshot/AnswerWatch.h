#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/services/SharedChannel.h"
#include "trading/AnswerCheck.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace Terminal {

/// Tells when the overlays of a chart have got their data: it is told of the answers that the trading
/// module sends to the chart's screen and to everybody, and counts what the overlays did with them.
///
/// An overlay has its data when each of its questions was answered and it has asked for a repaint for
/// every answer that holds something to draw. A combined overlay asks for no repaint: it has its data
/// when it was calculated after the last answer to everybody.
class AnswerWatch : public QObject
{
    Q_OBJECT

public:
    /// Waits for the overlays `kinds` (words of overlayKinds) of a chart that shows `data`.
    AnswerWatch(const ChartData &data, const QStringList &kinds, QObject *parent);

    /// What has not come yet, for the user; empty when everything has.
    QStringList missing() const;

    /// An overlay of the kind has asked for a repaint.
    void noteUpdate(const OverlayKind *kind);

    /// What came on the channel of the screen, for the chart's security, or of everybody.
    void takeAnswer(const Trading::CheckedAnswer &answer);
    void takeSharedNews(const SharedNews &news);

Q_SIGNALS:
    /// Something came that was waited for.
    void progressed();

private:
    struct Awaited
    {
        const OverlayKind *kind;
        QStringList commands;
        QStringList answered;
        int drawableAnswers = 0;
        int updates = 0;
    };

    QString m_code;
    std::vector<Awaited> m_awaited;
};

} // namespace Terminal
