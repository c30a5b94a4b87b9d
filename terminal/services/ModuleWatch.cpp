#include "terminal/services/ModuleWatch.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace Terminal {

using namespace std::chrono_literals;
using Trading::TradePresence;

namespace {

constexpr auto impatientInterval = 150ms;

constexpr int mostUnanswered = 3;

} // namespace

ModuleWatch::ModuleWatch(QObject *parent, std::chrono::milliseconds pulse) : QObject(parent)
{
    using LocalCommunication::Readiness;
    m_pulse.setInterval(pulse);
    m_impatience.setInterval(impatientInterval);
    connect(&m_pulse, &QTimer::timeout, this, &ModuleWatch::checkPulse);
    connect(&m_impatience, &QTimer::timeout, this, &ModuleWatch::ask);
    connect(&m_readiness, &Readiness::joined, this, &ModuleWatch::takeJoin);
    connect(&m_readiness, &Readiness::answered, this, &ModuleWatch::takeAnswer);
    connect(&m_readiness, &Readiness::announced, this, &ModuleWatch::takeWord);
}

void ModuleWatch::start(const QString &address)
{
    m_readiness.start(address);
    m_pulse.start();
}

bool ModuleWatch::isAnswering() const
{
    switch (m_state) {
    case State::Answering:
    case State::ReadOnly:
    case State::Refusing:
        return true;
    case State::Absent:
    case State::Silent:
        return false;
    }
    return false;
}

std::optional<TradePresence> ModuleWatch::presence() const
{
    return m_state != State::Absent && isAnnounced() ? m_presence : std::nullopt;
}

std::optional<QTime> ModuleWatch::unansweredSince() const
{
    return m_isLate && m_state != State::Absent ? std::optional(m_unansweredFrom) : std::nullopt;
}

Gate ModuleWatch::answerGate()
{
    return [this](QObject *context, std::function<void()> proceed) {
        auto *const waiting = new QObject(context);
        connect(this, &ModuleWatch::answered, waiting, [this, waiting, proceed = std::move(proceed)] {
            disconnect(this, nullptr, waiting, nullptr);
            // Other clients of this program read what arrived together with the answer first.
            QTimer::singleShot(0, waiting, [waiting, proceed] {
                waiting->deleteLater();
                proceed();
            });
        });
        ask();
        m_impatience.start();
    };
}

void ModuleWatch::ask()
{
    m_isAsked = true;
    m_readiness.ask();
}

void ModuleWatch::takeWord(const QByteArray &word)
{
    const std::optional<TradePresence> heard = TradePresence::ofJson(word);
    if (!heard || !replaces(*heard, m_presence)) {
        return;
    }
    const bool wasThere = m_presence && m_presence->isOnline;
    m_presence = heard;
    forgetUnanswered();
    const State before = m_state;
    if (heard->isOnline) {
        enterPresent();
    } else {
        m_isAsked = false;
        enter(State::Absent);
    }
    if (m_state == before) {
        Q_EMIT changed(); // another module, or another word of the same
        if (wasThere && heard->isOnline) {
            comeBack(); // it says who it is whenever it joins the bus
        }
    }
}

void ModuleWatch::comeBack()
{
    Q_EMIT cameBack();
    ask();
}

void ModuleWatch::takeAnswer(const QByteArray &answer)
{
    forgetUnanswered();
    m_impatience.stop();
    const QJsonObject object = QJsonDocument::fromJson(answer).object();
    if (!m_isAsked) {
        return;
    }
    if (object.value(QLatin1String(TradeChart::TradeKeyFields::SUCCESS)).toBool(true)) {
        enterPresent();
    } else {
        enter(State::Refusing, object.value(QLatin1String(TradeChart::TradeKeyFields::MSG)).toString());
    }
    Q_EMIT answered();
}

/// Who joins again was away, if only between two pulses, when no state shows it.
void ModuleWatch::takeJoin()
{
    const bool isBack = std::exchange(m_bus, Bus::Joined) != Bus::Joining;
    Q_EMIT changed();
    if (isBack) {
        comeBack();
    }
}

/// Asks whether it is still there; what was asked before and not answered tells.
void ModuleWatch::checkPulse()
{
    if (!isOnBus()) {
        loseBus();
        return;
    }
    const bool wasLate = m_isLate;
    m_isLate = m_unanswered > 0;
    m_unansweredFrom = m_isLate ? m_unansweredFrom : QTime::currentTime();
    if (m_unanswered == mostUnanswered) {
        enter(isAnnounced() ? State::Silent : State::Absent);
    } else {
        ++m_unanswered;
    }
    ask();
    if (m_isLate != wasLate) {
        Q_EMIT changed();
    }
}

/// Another module may be there when the bus comes again.
void ModuleWatch::loseBus()
{
    m_presence.reset();
    forgetUnanswered();
    enter(State::Absent);
    if (m_bus == Bus::Joined) {
        m_bus = Bus::Lost;
        Q_EMIT changed();
    }
}

void ModuleWatch::forgetUnanswered()
{
    m_unanswered = 0;
    if (std::exchange(m_isLate, false)) {
        Q_EMIT changed();
    }
}

void ModuleWatch::enterPresent()
{
    enter(isAnnounced() && m_presence->isReadOnly ? State::ReadOnly : State::Answering);
}

/// The one place where the state changes.
void ModuleWatch::enter(State state, const QString &reason)
{
    const bool wasAnswering = isAnswering();
    if (m_state == state && m_reason == reason) {
        return;
    }
    m_state = state;
    m_reason = reason;
    Q_EMIT changed();
    if (isAnswering() && !wasAnswering) {
        Q_EMIT answering();
    }
}

} // namespace Terminal
