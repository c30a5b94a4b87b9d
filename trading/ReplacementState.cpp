#include "trading/ReplacementState.h"

#include "trading/ModuleVocabulary.h"

#include <algorithm>
#include <iterator>

namespace Trading {

namespace {

struct StateWord
{
    ReplacementState state;
    const char *word;
};

constexpr StateWord words[] = {
    {ReplacementState::Waiting, ReplacementWords::WAITING},
    {ReplacementState::Placed, ReplacementWords::PLACED},
    {ReplacementState::Dealt, ReplacementWords::DEALT},
    {ReplacementState::Failed, ReplacementWords::FAILED},
};

} // namespace

QString wordOf(ReplacementState state)
{
    return QLatin1String(std::find_if(std::begin(words), std::end(words), [state](const StateWord &row) {
                             return row.state == state;
                         })->word);
}

std::optional<ReplacementState> replacementStateOf(const QString &word)
{
    const auto *const found = std::find_if(std::begin(words), std::end(words), [&word](const StateWord &row) {
        return word == QLatin1String(row.word);
    });
    return found == std::end(words) ? std::nullopt : std::optional(found->state);
}

} // namespace Trading
