#pragma once

#include "trademodule/check/CheckSettings.h"
#include "trademodule/check/Conversation.h"
#include "trading/MessageTable.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QStringList>

#include <functional>

namespace TradeModule {

struct Verdict;

/// An order that the check has placed.
struct PlacedOrder
{
    QString number; ///< empty when none could be placed
    QString clientNumber;
};

/// What is known of the module, and kept from case to case.
struct CheckMemory
{
    QMap<QString, Trading::WhenWrong> leftOut; ///< keys that its messages leave out, with what comes of it
    QSet<QString> seen;                        ///< such keys that are there now and then
    PlacedOrder order;
};

/// A case while it is run. Whatever is asked is judged by the rules that hold for every answer; the case adds
/// its own.
class CaseRun
{
public:
    /// A screen and how many answers belong there, for the time when all is asked.
    struct Expected
    {
        QByteArray screen;
        int answers;
    };

    /// All must outlive it.
    CaseRun(Conversation *conversation, const CheckSettings &settings, CheckMemory *memory);

    const CheckSettings &settings() const { return m_settings; }
    Conversation &conversation() { return *m_conversation; }
    CheckMemory &memory() { return *m_memory; }

    /// A question about a security, that of the settings at first.
    QJsonObject question(const char *command) const;
    static QJsonObject question(const char *command, const Trading::SecurityId &security);

    /// The answer, judged; empty when none came in time, which is a fault.
    QJsonObject ask(const QJsonObject &question);
    /// The same on a screen that is there already.
    QJsonObject askOn(const QByteArray &screen, QJsonObject question);
    /// The same, and a failure is a fault.
    QJsonObject askWell(const QJsonObject &question);
    /// The rows of the answer to askWell().
    QJsonArray rows(const QJsonObject &question);
    /// Asks for a failure of the kind whose reason names the key, where one is given.
    void askInVain(const QJsonObject &question, const char *key, int kind);
    /// The same of a message of any bytes, which is to be answered to its sender.
    void requestInVain(const QByteArray &message);
    /// Holds an answer against the rules; its object.
    QJsonObject judge(const QJsonObject &question, const QByteArray &answer);
    /// The same of a message that nobody asked for.
    void judgeUnasked(Trading::MessageRole role, const QByteArray &message);

    /// True when the module has said in its presence that it can do this.
    bool isSaidToKnow(const char *capability) const;
    /// The newest presence that is read; empty without one.
    QJsonObject presence() const;

    /// Each row that the rule does not hold for is a fault of the same words.
    void expectOfEach(const QJsonArray &rows, const std::function<bool(const QJsonObject &)> &holds,
                      const QString &fault);
    void expect(bool holds, const QString &fault);
    /// There was nothing to look at.
    void skip(const QString &why) { m_skipped = why; }
    void expectAnswers(const QByteArray &screen, int count) { m_expected.append({screen, count}); }

    const QStringList &faults() const { return m_faults; }
    const QString &skipped() const { return m_skipped; }
    const QVector<Expected> &expected() const { return m_expected; }
    /// What was asked and answered last, to be shown beside a fault.
    const QByteArray &lastQuestion() const { return m_lastQuestion; }
    const QByteArray &lastAnswer() const { return m_lastAnswer; }

private:
    void take(const Verdict &verdict);
    void expectFailure(const QJsonObject &answer, const char *key, int kind);

    Conversation *const m_conversation;
    const CheckSettings &m_settings;
    CheckMemory *const m_memory;
    QStringList m_faults;
    QString m_skipped;
    QVector<Expected> m_expected;
    QByteArray m_lastQuestion;
    QByteArray m_lastAnswer;
};

} // namespace TradeModule
