#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/data/DataFolder.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/services/SharedChannel.h"

#include <QStringList>

#include <vector>

namespace Terminal {

/// Tells when the overlays of a chart have got their data: it listens to the answers that the trading
/// module sends to the chart's screen and to everybody, and counts what the overlays did with them.
///
/// An overlay has its data when each of its questions was answered and it has asked for a repaint for
/// every answer that holds something to draw. A combined overlay asks for no repaint: it has its data
/// when it was calculated after the last answer to everybody.
class AnswerWatch : public QObject
{
    Q_OBJECT

public:
    /// Waits for the overlays `kinds` (words of overlayKinds) of a chart that shows `data` on the screen
    /// `screenId`.
    AnswerWatch(const QByteArray &screenId, const ChartData &data, const QStringList &kinds, QObject *parent);

    /// Starts to listen on the bus instance of `address`.
    void start(const QString &address);

    bool isComplete() const { return missing().isEmpty(); }

    /// What has not come yet, for the user.
    QStringList missing() const;

    /// An overlay of the kind has asked for a repaint.
    void noteUpdate(const OverlayKind *kind);

    /// A message on the channel of the screen, or of everybody.
    void takeAnswer(const QByteArray &payload);
    void takeSharedNews(const SharedNews &news);

Q_SIGNALS:
    /// Answers are heard from now on.
    void listening();

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

    void take(const QByteArray &topic, const QByteArray &payload, const QByteArray &channel);

    LocalCommunication::EndPoint m_endPoint;
    QByteArray m_screenId;
    QString m_code;
    std::vector<Awaited> m_awaited;
};

} // namespace Terminal
