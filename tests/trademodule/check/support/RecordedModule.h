#pragma once

#include "tests/trademodule/check/support/Mutation.h"

#include <QHash>

namespace TradeModule {

/// Remembers what a module said to each question of a check, and says it again: a check that asks the same
/// hears the same, without a ledger. A question that comes more often than it did hears the last answer
/// again.
class RecordedModule
{
public:
    /// An answering function that asks `module` and remembers.
    StandInModule::Answer recording(const StandInModule::Answer &module);

    /// The same module with a fault in what it says.
    RecordedModule with(const Mutation &mutation) const;

    /// An answering function that says what is remembered, from the beginning. This object must outlive it.
    StandInModule::Answer playing() const;

    /// All that was said, once each.
    QVector<Said> all() const;

private:
    QHash<QByteArray, QVector<QVector<Said>>> m_said; ///< by question, whatever its screen
};

} // namespace TradeModule
