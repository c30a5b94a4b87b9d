#pragma once

#include "trademodule/cli/Console.h"

#include <QElapsedTimer>

#include <optional>

namespace TradeModule {

/// How far an import is: bars for a person at a terminal, or lines of JSON for a program.
class ImportProgress
{
public:
    enum class Form { Bars, Json };

    explicit ImportProgress(Form form) : m_form(form) {}

    void show(const char *step, qint64 rows, qint64 of);
    /// Wipes the bar away.
    void end() { m_bar.reset(); }

private:
    void showBar(const char *step, qint64 rows, qint64 of);
    void writeLine(const char *step, qint64 rows, qint64 of);

    const Form m_form;
    const char *m_step = nullptr; ///< the last one
    std::optional<ProgressBar> m_bar;
    QElapsedTimer m_sinceLine;
};

} // namespace TradeModule
