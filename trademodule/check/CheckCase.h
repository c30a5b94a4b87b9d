#pragma once

#include <functional>
#include <vector>

namespace TradeModule {

class CaseRun;

/// One thing that a module is asked, and what must come of it. Texts are English sources of translations.
struct CheckCase
{
    const char *id;       ///< "history.oldest-first": stays the same in all versions
    const char *asks;     ///< what is asked
    const char *mustCome; ///< what must come
    const char *guide;    ///< "docs/messages.md#an-order": where the guides say so
    std::function<void(CaseRun &)> run;
};

using CheckCases = std::vector<CheckCase>;

} // namespace TradeModule
