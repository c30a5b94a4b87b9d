#include "trademodule/import/Entry.h"

namespace TradeModule {

Outcome outcomeOf(const Entry &entry)
{
    if (entry.kind.effect == Effect::ShortSale) {
        return Outcome::KeptOut;
    }
    if (entry.isReversal) {
        return Outcome::Nothing;
    }
    if (entry.shares) {
        return isTrade(entry.shares->side) ? Outcome::Trade : Outcome::Shares;
    }
    return entry.money ? Outcome::Money : Outcome::Nothing;
}

} // namespace TradeModule
