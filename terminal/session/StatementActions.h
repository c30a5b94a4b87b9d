#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/data/BookedAction.h"
#include "terminal/trade/OpenQuestion.h"
#include "trading/SecurityId.h"

#include <QJsonObject>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace Terminal {

class ChartSource;

/// Asks the trading module what the account's statements tell of the shown security's corporate actions, and
/// brings it to the charts' source. Nothing here blocks; where the module does not know the question, or
/// there is none, charts go by the files alone.
class StatementActions : public QObject
{
    Q_OBJECT

public:
    /// `source` must outlive this object.
    explicit StatementActions(ChartSource *source);

    /// Joins the bus instance of `address`. To be called once.
    void start(const QString &address);

    /// Asks about this security, and again about it when the module tells of past trades.
    void show(const Trading::SecurityId &security);

    /// Tells whether the module on the bus knows the question; none does until then.
    void setIsKnown(std::function<bool()> isKnown) { m_isKnown = std::move(isKnown); }
    /// To be called when the module may be another one.
    void noteModule();

    /// False while an answer is waited for.
    bool isUpToDate() const { return !m_isKnown() || m_question.isAnswered(); }

Q_SIGNALS:
    /// The source knows other actions of this security than before.
    void changed(const QString &code);
    /// An answer was taken.
    void answered();

private:
    void askAnew();
    void askLater();
    QString ask();
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer);

    ChartSource *m_source;
    LocalCommunication::EndPoint m_endPoint;
    const QString m_channel;
    int m_questionCount = 0;
    OpenQuestion m_question;
    Trading::SecurityId m_security;
    bool m_wasKnown = false; ///< when the module was noted last
    std::function<bool()> m_isKnown = [] { return false; };
};

/// The rows of an answer, those left out that lack what is needed.
BookedActions bookedActionsOf(const QJsonObject &answer);

} // namespace Terminal
