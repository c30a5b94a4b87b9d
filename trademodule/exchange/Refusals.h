#pragma once

#include <QCache>
#include <QString>

#include <functional>

namespace TradeModule {

/// A wish that was refused stays refused. Who waits for an answer asks again, and so two copies of a wish may
/// be on their way: were the second one granted, an order would stand of which its user was told that it does
/// not. The wishes refused last are remembered, as long as the module runs.
class Refusals
{
public:
    /// A wish by its client's number and all that it asks for: under the same number something else is
    /// another wish. Without a number no wish can be known again.
    struct Wish
    {
        QString clientNumber;
        QString content;
    };

    /// Does what may be refused by an Error. When this wish was refused before, nothing is done and it is
    /// refused again, for the same reason. Failures of the ledger refuse nothing.
    void decideOnce(const Wish &wish, const std::function<void()> &decision);

private:
    static constexpr int mostKept = 10000; ///< no copy of a wish is so old

    QCache<QString, QString> m_reasons{mostKept}; ///< by number and content
};

} // namespace TradeModule
