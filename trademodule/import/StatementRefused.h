#pragma once

#include "trademodule/Error.h"

#include <QStringList>

namespace TradeModule {

/// Why a statement as a whole cannot be imported, and what may help.
struct Refusal
{
    QString reason;
    QString file{};         ///< empty for a text
    QStringList accounts{}; ///< of the statement, when one of them must be chosen
    QStringList names{};    ///< what the line that comes nearest to a header names, when there is none
};

class StatementRefused : public Error
{
public:
    explicit StatementRefused(const Refusal &refusal)
        : Error(refusal.file.isEmpty() ? refusal.reason
                                       : refusal.file + QLatin1String(": ") + refusal.reason),
          m_refusal(refusal)
    {
    }

    const Refusal &refusal() const { return m_refusal; }

private:
    Refusal m_refusal;
};

} // namespace TradeModule
