#include "terminal/results/ResultsDesk.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace Terminal {

namespace {

using namespace TradeChart;

constexpr std::chrono::seconds defaultTimeout(10);
constexpr std::chrono::seconds heartbeat(3);

} // namespace

ResultsDesk::ResultsDesk(std::function<RowsAsked()> wanted, QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_wanted(std::move(wanted)),
      m_channel(QStringLiteral("terminal-results-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_question([this] { return send(); }),
      m_wishes([this](const QByteArray &question) { return send(question); })
{
    using LocalCommunication::EndPoint;
    setTimeout(defaultTimeout);
    m_heartbeat.setInterval(heartbeat);
    connect(&m_heartbeat, &QTimer::timeout, this, &ResultsDesk::ask);
    connect(&m_endPoint, &EndPoint::ready, this, &ResultsDesk::askAgain);
    connect(&m_endPoint, &EndPoint::messageReceived, this, &ResultsDesk::handleMessage);
    connect(&m_question, &OpenQuestion::unanswered, this, [this] { setAnswering(false); });
}

void ResultsDesk::setTimeout(std::chrono::milliseconds patience)
{
    m_question.setTimeout(patience);
    m_wishes.setTimeout(patience);
}

void ResultsDesk::start(const QString &address)
{
    m_isStarted = true;
    m_endPoint.subscribe(m_channel.toLatin1(), QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(Trading::Channel::GLOBAL, QByteArray(Topic::TRADENOTIFY));
    m_endPoint.connect(address);
}

void ResultsDesk::watch(bool on)
{
    if (on == m_heartbeat.isActive()) {
        return;
    }
    if (on) {
        m_heartbeat.start();
        ask();
    } else {
        m_heartbeat.stop();
    }
}

void ResultsDesk::ask()
{
    if (m_isStarted) {
        m_question.ask();
    }
}

void ResultsDesk::askAnew()
{
    if (m_isStarted) {
        m_question.askAnew();
    }
}

void ResultsDesk::askAgain()
{
    if (m_heartbeat.isActive()) {
        askAnew();
    }
}

QString ResultsDesk::nextId()
{
    return QStringLiteral("%1.%2").arg(m_channel).arg(++m_questionCount);
}

bool ResultsDesk::send(const QByteArray &question)
{
    return m_endPoint.isConnected() &&
           m_endPoint.sendMessage(Trading::Channel::GLOBAL, Topic::TRADEQUERY, question);
}

/// The question's id; empty without a bus.
QString ResultsDesk::send()
{
    const RowsAsked asked = m_wanted();
    const QString id = nextId();
    Trading::Question question = asked.question();
    question.answerOn(m_channel, id);
    if (!send(question.toJson())) {
        return {};
    }
    constexpr size_t mostAsked = 30; // more than are waited for
    m_asked.emplace_back(id, asked);
    if (m_asked.size() > mostAsked) {
        m_asked.pop_front();
    }
    return id;
}

void ResultsDesk::setCostMethod(const QString &word)
{
    const QString id = nextId();
    Trading::Question question(Trading::CmdType::COSTMETHOD);
    question.answerOn(m_channel, id);
    question.setCostMethod(word);
    Wish wish;
    wish.id = id;
    wish.question = question.toJson();
    wish.tell = [this](const DeskOutcome &outcome) { Q_EMIT costMethodAnswered(outcome); };
    m_wishes.add(wish);
}

void ResultsDesk::handleMessage(const QByteArray &topic, const QByteArray &payload)
{
    if (topic == Topic::TRADEQUERY) {
        takeAnswer(QJsonDocument::fromJson(payload).object());
    } else if (topic == Topic::TRADENOTIFY && m_heartbeat.isActive()) {
        ask();
    }
}

void ResultsDesk::takeAnswer(const QJsonObject &answer)
{
    setAnswering(true);
    const QString id = answer.value(QLatin1String(TradeKeyFields::OBJECTID)).toString();
    if (m_wishes.close(id, outcomeOf(answer))) {
        return;
    }
    if (!m_question.close(id)) {
        return;
    }
    if (isGranted(answer)) {
        Q_EMIT came(readPart(answer, askedBy(id)));
    } else {
        Q_EMIT refused(refusalOf(answer));
    }
}

RowsAsked ResultsDesk::askedBy(const QString &id) const
{
    const auto found =
        std::find_if(m_asked.begin(), m_asked.end(), [&id](const auto &asked) { return asked.first == id; });
    return found == m_asked.end() ? RowsAsked() : found->second;
}

void ResultsDesk::setAnswering(bool isAnswering)
{
    if (m_isAnswering != isAnswering) {
        m_isAnswering = isAnswering;
        Q_EMIT answeringChanged(isAnswering);
    }
}

} // namespace Terminal
