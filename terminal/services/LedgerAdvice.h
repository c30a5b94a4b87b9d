#pragma once

#include <QString>

namespace Terminal {

/// What a trader can do about a ledger that cannot be used, from the words with which its trading module
/// ended; empty where nothing is known. The words are those of the database, which speaks English in every
/// language.
QString ledgerAdvice(const QString &lastWords);

} // namespace Terminal
