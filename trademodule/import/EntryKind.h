#pragma once

#include "trademodule/ledger/Execution.h"

#include <QString>

#include <optional>

namespace TradeModule {

/// What the words of a statement's entry say.
namespace EntryKind {

/// The word alone: a security's name after a colon or in brackets is not part of it.
QString plainWord(const QString &cell);

/// The kind of an entry that is no trade, e.g. "dividends"; nothing for a trade or an unknown word.
std::optional<QString> ofNoTrade(const QString &word);

/// True for shares received for nothing.
bool isBonus(const QString &word);

/// Buy or sell; nothing for any other word.
std::optional<Side> side(const QString &word);

/// The same for a column that holds nothing but the side, where numbers may stand for words.
std::optional<Side> sideOfSideColumn(const QString &word);

/// True for a footer's word: a sum, a page's end.
bool isTotal(const QString &word);

} // namespace EntryKind

} // namespace TradeModule
