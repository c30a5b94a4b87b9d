#include "trademodule/bus/StatusQuestion.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/BusVisit.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Question.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace TradeModule {

using LocalCommunication::EndPoint;
using namespace Trading;

namespace {

/// A visitor on the bus that hears who is announced there.
class Visit
{
public:
    explicit Visit(const QString &busDirectory)
    {
        QObject::connect(&m_endPoint, &EndPoint::messageReceived, &m_endPoint,
                         [this](const QByteArray & /*topic*/, const QByteArray &payload) { hear(payload); });
        m_endPoint.subscribe(Channel::GLOBAL, QByteArray(Topic::TRADEPRESENCE));
        m_isThere = joinInTime(&m_endPoint, busDirectory);
    }

    bool isThere() const { return m_isThere; }

    /// Empty when nobody answers within the three seconds of a request.
    QJsonObject ask()
    {
        const QByteArray question = Question(CmdType::MODULESTATUS).toJson();
        return QJsonDocument::fromJson(m_endPoint.request(TradeChart::Topic::TRADEQUERY, question)).object();
    }

    /// Words come with the subscription, also while a request is waited for.
    std::optional<TradePresence> announced()
    {
        QCoreApplication::processEvents();
        return m_known && m_known->isOnline ? m_known : std::nullopt;
    }

private:
    void hear(const QByteArray &payload)
    {
        const auto heard = TradePresence::ofJson(payload);
        if (heard && replaces(*heard, m_known)) {
            m_known = heard;
        }
    }

    EndPoint m_endPoint{nullptr};
    bool m_isThere = false;
    std::optional<TradePresence> m_known;
};

/// What is known of a module that does not tell its status.
ModuleStatus statusOf(const std::optional<TradePresence> &announced)
{
    ModuleStatus status;
    status.module = announced.value_or(TradePresence());
    return status;
}

} // namespace

BusStatus askStatus(const QString &busDirectory)
{
    Visit visit(busDirectory);
    if (!visit.isThere()) {
        return {Standing::NoBus};
    }
    const QJsonObject answer = visit.ask();
    const auto announced = visit.announced();
    if (answer.isEmpty()) {
        return announced ? BusStatus{Standing::NoAnswer, statusOf(announced)}
                         : BusStatus{Standing::NobodyServes};
    }
    const auto told =
        ModuleStatus::ofJson(answer.value(QLatin1String(TradeChart::TradeKeyFields::DATA)).toObject());
    const ModuleStatus status = told.value_or(statusOf(announced));
    return {status.ledgerTrouble.isEmpty() ? Standing::Serving : Standing::LedgerAway, status,
            told.has_value()};
}

} // namespace TradeModule
