#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/answers/AnswerChecker.h"
#include "terminal/services/SharedChannel.h"
#include "trading/AnswerCheck.h"

#include <QSet>
#include <QStringList>

namespace Terminal {

/// Hears what the overlays of a window ask and what they are answered, holds every answer against the table
/// of messages and tells what is wrong with it. It changes nothing in what overlays do with an answer. When
/// the trade points have asked for past trades it has them ask for today's, too.
class ScreenAnswers : public QObject
{
    Q_OBJECT

public:
    /// `screenId` names the window on the bus.
    ScreenAnswers(const QByteArray &screenId, QObject *parent);

    /// Starts to listen on the bus instance of `address`.
    void start(const QString &address);

    /// What the window shows from now on. Faults may be told again, for another chart has them.
    void setSecurity(const Trading::SecurityId &security);

    /// Whether values that stand where they do not belong are left out of what is told: they may be amounts.
    void setAmountsHidden(bool hidden) { m_hidesAmounts = hidden; }

    /// A message that was heard.
    void take(const QByteArray &topic, const QByteArray &payload, const QByteArray &channel);

Q_SIGNALS:
    /// Answers are heard from now on.
    void listening();

    /// An overlay of this window has asked.
    void asked(const QString &command);

    /// The answer to overlays of this window came; it is for the shown security.
    void answered(const Trading::CheckedAnswer &answer);

    /// What is wrong with an answer, a line for each fault that the user was not told before. Everything is
    /// in the log, each time.
    void foundWrong(const QStringList &faults);

    /// Trades of past days have changed: overlays that show the security do not ask for them again.
    void pastTradesChanged(const QString &code);

    /// News on the channel of everybody, see SharedChannel.
    void newsHeard(const SharedNews &news);

private:
    /// An answer with past trades, and after which question for them it came.
    struct History
    {
        QByteArray digest;
        int question = 0;
    };

    void takeAnswer(const QByteArray &payload);
    void takeChecked(Trading::CheckedAnswer answer, const History &history);
    bool isToNobodysQuestion(const Trading::CheckedAnswer &answer);
    void takeShared(const QByteArray &payload);
    void tellOfNewBars(const QString &code);
    void takeNotification(const QByteArray &payload);
    void addRepetition(const History &history, Trading::CheckedAnswer *answer);
    void tellFaults(const Trading::CheckedAnswer &answer);

    LocalCommunication::EndPoint m_endPoint;
    QByteArray m_screenId;
    Trading::AnsweredChart m_chart;
    bool m_hidesAmounts = false;
    QSet<QString> m_told;
    QSet<QString> m_askedOfNone; ///< commands of questions that named no security
    History m_lastHistory;
    int m_historyQuestion = 0; ///< counts those that were heard
    AnswerChecker m_checker;
};

} // namespace Terminal
