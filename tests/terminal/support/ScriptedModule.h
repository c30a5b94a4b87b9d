#pragma once

#include "endpoint/EndPoint.h"
#include "tests/support/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

namespace Terminal {

/// A trading module on a real bus that says what the test tells it to. It keeps every question; what has
/// no answer here stays unanswered until answer() is called.
class ScriptedModule : public QObject
{
public:
    explicit ScriptedModule(const QString &busAddress) : m_endPoint(nullptr)
    {
        connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
                [this](const QByteArray &, const QByteArray &payload) { take(payload); });
        connect(&m_endPoint, &LocalCommunication::EndPoint::ready, this, [this] { m_isReady = true; });
        m_endPoint.subscribe("Global", QByteArray("TradeQuery"));
        m_endPoint.connect(busAddress);
    }

    bool isReady() const { return m_isReady; }

    /// From now on questions with this command are answered with these keys.
    void setAnswer(const QString &command, const QJsonObject &keys) { m_answers[command] = keys; }
    void setSilent(const QString &command) { m_answers.remove(command); }

    /// The questions with this command, oldest first.
    std::vector<QJsonObject> asked(const QString &command) const
    {
        std::vector<QJsonObject> found;
        for (const QJsonObject &question : m_questions) {
            if (question.value(QLatin1String("cmd")).toString() == command) {
                found.push_back(question);
            }
        }
        return found;
    }

    /// Waits until it was asked so often with this command.
    bool wasAsked(const char *command, size_t times) const
    {
        return waitUntil([=] { return asked(QLatin1String(command)).size() == times; });
    }

    void answer(const QJsonObject &question, const QJsonObject &keys)
    {
        QJsonObject answer = question;
        answer.insert(QStringLiteral("success"), true);
        for (auto key = keys.begin(); key != keys.end(); ++key) {
            answer.insert(key.key(), key.value());
        }
        m_endPoint.sendMessage(question.value(QLatin1String("screenId")).toString().toLatin1(), "TradeQuery",
                               QJsonDocument(answer).toJson());
    }

    /// Tells of a change; of past trades when there is a day.
    void notify(const QString &code, const QString &pastDay = {})
    {
        QJsonObject change{{QStringLiteral("stkcode"), code},
                           {QStringLiteral("market"), QStringLiteral("1")}};
        if (!pastDay.isEmpty()) {
            change.insert(QStringLiteral("bizdate"), pastDay);
        }
        m_endPoint.sendMessage("Global", "TradeNotify", QJsonDocument(change).toJson());
    }

private:
    void take(const QByteArray &payload)
    {
        const QJsonObject question = QJsonDocument::fromJson(payload).object();
        m_questions.push_back(question);
        const auto known = m_answers.constFind(question.value(QLatin1String("cmd")).toString());
        if (known != m_answers.constEnd()) {
            answer(question, *known);
        }
    }

    LocalCommunication::EndPoint m_endPoint;
    QHash<QString, QJsonObject> m_answers;
    std::vector<QJsonObject> m_questions;
    bool m_isReady = false;
};

} // namespace Terminal
