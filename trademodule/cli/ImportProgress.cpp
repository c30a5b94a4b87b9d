#include "trademodule/cli/ImportProgress.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/JsonReply.h"

#include <chrono>

namespace TradeModule {

void ImportProgress::show(const char *step, qint64 rows, qint64 of)
{
    switch (m_form) {
    case Form::Bars:
        showBar(step, rows, of);
        break;
    case Form::Json:
        writeLine(step, rows, of);
        break;
    }
    m_step = step;
}

void ImportProgress::showBar(const char *step, qint64 rows, qint64 of)
{
    if (step != m_step) {
        m_bar.reset();
        m_bar.emplace(translated(step));
    }
    m_bar->show(rows, of);
}

/// A reader need not keep up with every row; the last line of a step is always written.
void ImportProgress::writeLine(const char *step, qint64 rows, qint64 of)
{
    constexpr std::chrono::milliseconds between(100);
    const bool isDue =
        step != m_step || rows == of || std::chrono::milliseconds(m_sinceLine.elapsed()) >= between;
    if (isDue) {
        m_sinceLine.start();
        JsonReply::write({{QStringLiteral("progress"),
                           QJsonObject{{QStringLiteral("step"), QString::fromLatin1(step).toLower()},
                                       {QStringLiteral("rows"), rows},
                                       {QStringLiteral("of"), of}}}});
    }
}

} // namespace TradeModule
