#pragma once

#include "trading/ResultColumns.h"

namespace Terminal {

/// What a column of results is called, translated.
QString titleOf(Trading::ResultField field);
/// What a list is called, translated: "by sale".
QString titleOf(Trading::ResultGroup group);

/// A cell as it is shown: its number with commas, and a sign where it was earned.
QString shownCell(Trading::ResultField field, const QString &text);

/// True for what tells of the user's shares or money, and goes while amounts are hidden.
bool isAmount(Trading::ResultKind kind);

} // namespace Terminal
