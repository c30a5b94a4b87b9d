#include "tests/trademodule/support/LedgerAudit.h"

#include "trademodule/exchange/TradingRules.h"
#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/ledger/Transaction.h"

#include <cmath>

namespace TradeModule {

namespace {

/// Every row that a rule's query gives breaks it; the first column names the row.
struct Rule
{
    const char *broken;
    const char *query;
};

// executions of the paper exchange are those that no statement brought
constexpr Rule rules[] = {
    {"an order's matched quantity and amount are not the sums of its executions",
     "SELECT o.id FROM trade_order o LEFT JOIN execution e "
     "ON e.order_no = CAST(o.id AS TEXT) AND e.statement_id IS NULL GROUP BY o.id "
     "HAVING COALESCE(SUM(e.quantity), 0) <> o.matched_quantity "
     "OR COALESCE(SUM(e.amount), 0) <> o.matched_amount"},
    {"more of an order is dealt and cancelled than was ordered",
     "SELECT id FROM trade_order WHERE matched_quantity + cancelled_quantity > quantity"},
    {"an order's status does not fit its quantities",
     "SELECT id FROM trade_order WHERE NOT CASE "
     "WHEN status IN ('0', '1', '2', '3', '9', 'A') THEN matched_quantity = 0 AND cancelled_quantity = 0 "
     "WHEN status IN ('4', '7') THEN matched_quantity > 0 AND matched_quantity < quantity "
     "AND cancelled_quantity = 0 "
     "WHEN status = '5' THEN matched_quantity > 0 AND matched_quantity + cancelled_quantity = quantity "
     "WHEN status = '6' THEN matched_quantity = 0 AND cancelled_quantity = quantity "
     "WHEN status = '8' THEN matched_quantity = quantity "
     "ELSE FALSE END"},
    {"an execution belongs to no order of its security and side, or is worse than the order's price",
     "SELECT e.id FROM execution e LEFT JOIN trade_order o ON o.id = CAST(NULLIF(e.order_no, '') AS BIGINT) "
     "WHERE e.statement_id IS NULL AND (o.id IS NULL OR o.security_id <> e.security_id OR o.side <> e.side "
     "OR (e.side = 'B' AND e.price > o.price) OR (e.side = 'S' AND e.price < o.price))"},
    {"an execution's amount is not price times quantity",
     "SELECT id FROM execution WHERE amount <> price * quantity"},
    {"a deal number occurs twice",
     "SELECT deal_no FROM execution WHERE statement_id IS NULL GROUP BY deal_no HAVING COUNT(*) > 1"},
    {"a holding is not the sum of its executions",
     "SELECT h.security_id FROM holding h JOIN execution e ON e.security_id = h.security_id "
     "GROUP BY h.security_id HAVING SUM(CASE e.side WHEN 'S' THEN -e.quantity ELSE e.quantity END) <> "
     "h.quantity"},
    {"more was sold than was held when the orders began",
     "SELECT security_id FROM execution GROUP BY security_id HAVING "
     "SUM(CASE WHEN side = 'S' THEN quantity ELSE 0 END) > "
     "SUM(CASE WHEN statement_id IS NOT NULL THEN quantity ELSE 0 END)"},
};

class Audit
{
public:
    Audit(Ledger *ledger, Money openingCash) : m_ledger(ledger), m_openingCash(openingCash) {}

    std::vector<std::string> findings()
    {
        const Transaction nobodyWrites(m_ledger->database());
        for (const Rule &rule : rules) {
            check(rule);
        }
        checkCash();
        checkFees();
        checkCosts();
        return m_findings;
    }

private:
    void report(const std::string &broken, const QString &row)
    {
        m_findings.push_back(broken + ": " + row.toStdString());
    }

    void check(const Rule &rule)
    {
        Rows rows = m_ledger->database()->run(QLatin1String(rule.query));
        while (rows.next()) {
            report(rule.broken, rows.value(0).toString());
        }
    }

    void checkCash()
    {
        Rows row = m_ledger->database()->run(QStringLiteral(
            "SELECT cash, (SELECT COALESCE(SUM(CASE side WHEN 'B' THEN amount + fee ELSE fee - amount END), "
            "0) FROM execution WHERE statement_id IS NULL) FROM account"));
        row.next();
        const qint64 expected = m_openingCash.steps() - row.value(1).toLongLong();
        if (row.value(0).toLongLong() != expected) {
            report("the cash is not what the executions leave", row.value(0).toString());
        }
    }

    /// An order in parts pays what it would have paid in one.
    void checkFees()
    {
        Rows rows = m_ledger->database()->run(QStringLiteral(
            "SELECT o.id, o.side, o.matched_amount, SUM(e.fee) FROM trade_order o JOIN execution e "
            "ON e.order_no = CAST(o.id AS TEXT) AND e.statement_id IS NULL GROUP BY o.id"));
        while (rows.next()) {
            const Direction direction = directionOfCode(rows.value(1).toString()).value();
            const Money due = TradingRules::fees(direction, Money::ofSteps(rows.value(2).toLongLong()));
            if (due.steps() != rows.value(3).toLongLong()) {
                report("an order's fees are not those of its amount", rows.value(0).toString());
            }
        }
    }

    void checkCosts()
    {
        QHash<SecurityId, Holding> holdings;
        AccountHistory history(m_ledger->database());
        for (const KnownSecurity &known : history.securities()) {
            Holding &holding = holdings[known.security];
            history.visit(known, [&holding](const AccountEvent &event) { holding.add(event); });
        }
        for (auto holding = holdings.cbegin(); holding != holdings.cend(); ++holding) {
            constexpr double tolerance = 0.01; // yuan: sums of doubles in another order
            if (std::fabs(m_ledger->holding(holding.key()).cost() - holding->cost()) > tolerance) {
                report("a holding's cost is not that of its executions", holding.key().code);
            }
        }
    }

    Ledger *const m_ledger;
    const Money m_openingCash;
    std::vector<std::string> m_findings;
};

} // namespace

std::vector<std::string> audit(Ledger *ledger, Money openingCash)
{
    return Audit(ledger, openingCash).findings();
}

} // namespace TradeModule
