#pragma once

#include "trademodule/check/CaseRun.h"
#include "trademodule/check/CheckCase.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace TradeModule {

/// What came of a case.
struct CaseResult
{
    const CheckCase *checked;
    QStringList faults;  ///< empty when all was right
    QString skipped;     ///< why there was nothing to look at; empty when there was
    QByteArray question; ///< that was asked last
    QByteArray answer;   ///< that came last
};

/// Asks a module all that is in a table of cases.
class Checkup
{
public:
    struct Report
    {
        std::vector<CaseResult> results; ///< of each case, in the order of the table
        QStringList leftOut; ///< keys that answers leave out, as the guides allow, with what comes of it
    };

    /// The bus must outlive it.
    Checkup(CheckedBus *bus, CheckSettings settings);

    /// True when somebody answers on the bus at all.
    bool isAnswered();

    /// Runs cases, once. `told` hears of each that is done; a fault that is seen only in the end, an answer
    /// that came twice, stands in the report alone.
    Report run(const CheckCases &cases, const std::function<void(const CaseResult &)> &told = {});

private:
    CaseResult runCase(const CheckCase &checked);
    void findRepeated(Report *report);
    QStringList keysLeftOut() const;

    const CheckSettings m_settings;
    Conversation m_conversation;
    CheckMemory m_memory;
    std::vector<QVector<CaseRun::Expected>> m_expected; ///< of each case
};

} // namespace TradeModule
