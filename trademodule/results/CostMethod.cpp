#include "trademodule/results/CostMethod.h"

#include "trademodule/ProgramLanguage.h"
#include "trading/ModuleVocabulary.h"

#include <algorithm>
#include <iterator>

namespace TradeModule {

namespace {

struct MethodWords
{
    CostMethod method;
    const char *word;
    const char *name;
};

constexpr MethodWords methods[] = {
    {CostMethod::Average, Trading::CostWords::AVERAGE, QT_TR_NOOP("moving average")},
    {CostMethod::Diluted, Trading::CostWords::DILUTED, QT_TR_NOOP("diluted")},
    {CostMethod::Fifo, Trading::CostWords::FIFO, QT_TR_NOOP("first in, first out")},
};

const MethodWords &wordsOf(CostMethod method)
{
    return *std::find_if(std::begin(methods), std::end(methods),
                         [method](const MethodWords &row) { return row.method == method; });
}

} // namespace

QString wordOf(CostMethod method)
{
    return QLatin1String(wordsOf(method).word);
}

std::optional<CostMethod> costMethodOf(const QString &word)
{
    const auto *const row =
        std::find_if(std::begin(methods), std::end(methods),
                     [&word](const MethodWords &words) { return word == QLatin1String(words.word); });
    return row == std::end(methods) ? std::nullopt : std::optional(row->method);
}

QString nameOf(CostMethod method)
{
    return translated(wordsOf(method).name);
}

} // namespace TradeModule
