#include "trademodule/check/Checkup.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/AnswerRules.h"

#include <utility>

namespace TradeModule {

Checkup::Checkup(CheckedBus *bus, CheckSettings settings)
    : m_settings(std::move(settings)),
      m_conversation(bus, m_settings)
{
}

bool Checkup::isAnswered()
{
    return !m_conversation.request("{}").isEmpty();
}

Checkup::Report Checkup::run(const CheckCases &cases, const std::function<void(const CaseResult &)> &told)
{
    Report report;
    for (const CheckCase &checked : cases) {
        report.results.push_back(runCase(checked));
        if (told) {
            told(report.results.back());
        }
    }
    findRepeated(&report);
    report.leftOut = keysLeftOut();
    return report;
}

QStringList Checkup::keysLeftOut() const
{
    QStringList keys;
    for (auto key = m_memory.leftOut.begin(); key != m_memory.leftOut.end(); ++key) {
        if (isNoticed(*key) || !m_memory.seen.contains(key.key())) {
            keys.append(QStringLiteral("%1 (%2)").arg(key.key(), effectText(*key)));
        }
    }
    return keys;
}

CaseResult Checkup::runCase(const CheckCase &checked)
{
    CaseRun run(&m_conversation, m_settings, &m_memory);
    checked.run(run);
    m_expected.push_back(run.expected());
    return {&checked, run.faults(), run.skipped(), run.lastQuestion(), run.lastAnswer()};
}

/// Messages of one sender keep their order, so when a last question is answered, what was said twice is here.
void Checkup::findRepeated(Report *report)
{
    m_conversation.request("{}");
    for (size_t place = 0; place < m_expected.size(); ++place) {
        for (const CaseRun::Expected &expected : m_expected[place]) {
            const int came = m_conversation.answersOn(expected.screen).size();
            if (came > expected.answers) {
                report->results[place].faults.append(
                    translated("%1 answers came in place of %2").arg(came).arg(expected.answers));
            }
        }
    }
}

} // namespace TradeModule
