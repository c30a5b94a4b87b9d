#include "trademodule/results/CostMethod.h"

#include "trademodule/ProgramLanguage.h"

#include <algorithm>
#include <iterator>

namespace TradeModule {

namespace {

struct MethodWords
{
    CostMethod method;
    QLatin1String word;
    const char *name;
};

constexpr MethodWords methods[] = {
    {CostMethod::Average, QLatin1String("average", 7), QT_TR_NOOP("moving average")},
    {CostMethod::Diluted, QLatin1String("diluted", 7), QT_TR_NOOP("diluted")},
    {CostMethod::Fifo, QLatin1String("fifo", 4), QT_TR_NOOP("first in, first out")},
};

const MethodWords &wordsOf(CostMethod method)
{
    return *std::find_if(std::begin(methods), std::end(methods),
                         [method](const MethodWords &row) { return row.method == method; });
}

} // namespace

QString wordOf(CostMethod method)
{
    return wordsOf(method).word;
}

std::optional<CostMethod> costMethodOf(const QString &word)
{
    const auto *const row = std::find_if(std::begin(methods), std::end(methods),
                                         [&word](const MethodWords &words) { return word == words.word; });
    return row == std::end(methods) ? std::nullopt : std::optional(row->method);
}

QString nameOf(CostMethod method)
{
    return translated(wordsOf(method).name);
}

} // namespace TradeModule
