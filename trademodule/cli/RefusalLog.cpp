#include "trademodule/cli/RefusalLog.h"

#include "trademodule/ProgramLanguage.h"

#include <chrono>

namespace TradeModule {

namespace {

/// It may repeat whatever was in the question.
QString cut(const QString &refusal)
{
    return refusal.size() <= RefusalLog::mostCharacters
               ? refusal
               : refusal.left(RefusalLog::mostCharacters - 1) + QStringLiteral(u"…");
}

} // namespace

RefusalLog::RefusalLog(std::function<void(const QString &)> tell) : m_tell(std::move(tell))
{
    m_minute.setSingleShot(true);
    m_minute.setInterval(std::chrono::minutes(1));
    QObject::connect(&m_minute, &QTimer::timeout, [this] { tellCounts(); });
}

void RefusalLog::add(const QString &wholeRefusal)
{
    const QString refusal = cut(wholeRefusal);
    if (!m_minute.isActive()) {
        m_minute.start();
    }
    if (const auto told = m_repeats.find(refusal); told != m_repeats.end()) {
        ++*told;
    } else if (m_repeats.size() < mostLines) {
        m_repeats.insert(refusal, 0);
        m_tell(refusal);
    } else {
        ++m_others;
    }
}

void RefusalLog::tellCounts()
{
    m_minute.stop();
    for (auto told = m_repeats.constBegin(); told != m_repeats.constEnd(); ++told) {
        if (told.value() > 0) {
            m_tell(translated("%1 (%2 times more within a minute)").arg(told.key()).arg(told.value()));
        }
    }
    if (m_others > 0) {
        m_tell(translated("%1 other refusals within a minute").arg(m_others));
    }
    m_repeats.clear();
    m_others = 0;
}

} // namespace TradeModule
