#include "trademodule/bus/ServiceRecord.h"

#include <algorithm>

namespace TradeModule {

using Trading::ModuleStatus;

void ServiceRecord::hear(const Trading::Quote &quote)
{
    ++m_status.quotes;
    m_status.lastQuote =
        ModuleStatus::LastQuote{quote.security, quote.date, quote.time, QDateTime::currentDateTimeUtc()};
}

void ServiceRecord::answered(const QString &command, bool isFailure, std::chrono::microseconds taken)
{
    ModuleStatus::Answers &answers = m_answers[command];
    answers.command = command;
    ++answers.count;
    answers.failures += isFailure ? 1 : 0;
    answers.taken += taken;
    answers.longest = std::max(answers.longest, taken);
}

ModuleStatus ServiceRecord::status() const
{
    ModuleStatus status = m_status;
    for (const ModuleStatus::Answers &answers : m_answers) {
        status.answers.append(answers);
    }
    return status;
}

} // namespace TradeModule
