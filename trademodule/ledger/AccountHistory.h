#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/results/AccountEvent.h"

#include <QVector>

#include <functional>
#include <vector>

namespace TradeModule {

/// A security that the ledger knows.
struct KnownSecurity
{
    qint64 id; ///< its key in the ledger
    SecurityId security;
    QString name;
};

/// What happened to an account: entries and money together, as costs and results are reckoned from. Money in
/// other currencies is left out, and so is what only moved, such as bank transfers.
class AccountHistory
{
public:
    using Visitor = std::function<void(const AccountEvent &)>;

    /// The database stays the caller's and outlives this object.
    explicit AccountHistory(Database *database) : m_database(database) {}

    /// All, or those of a code, by code.
    QVector<KnownSecurity> securities(const QString &code = {});
    /// Has every event of a security visited, oldest first, without holding them. Statements tell of money by
    /// code: where two markets have the code, it counts to the security that the ledger knew first. The
    /// visitor does not use the database.
    void visit(const KnownSecurity &security, const Visitor &visit);
    /// The same for money that belongs to no security that the ledger knows.
    void visitOtherMoney(const Visitor &visit);

private:
    using Events = std::vector<AccountEvent>;
    Events money(const QString &condition, const QVariantList &values);

    Database *const m_database;
};

} // namespace TradeModule
