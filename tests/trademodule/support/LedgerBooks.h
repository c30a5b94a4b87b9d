#pragma once

#include "trademodule/ledger/Ledger.h"

#include <string>
#include <vector>

namespace TradeModule {

/// Everything that a ledger says of the account, a line each.
inline std::vector<std::string> booksOf(Ledger *ledger)
{
    std::vector<std::string> books;
    for (const char *const query :
         {"SELECT s.code, e.side, e.trade_date, e.trade_time, e.price, e.quantity, e.amount, e.fee, "
          "e.order_no, "
          "e.deal_no FROM execution e JOIN security s ON s.id = e.security_id "
          "ORDER BY s.code, e.trade_date, e.trade_time, e.id",
          "SELECT s.code, h.quantity, h.cost FROM holding h JOIN security s ON s.id = h.security_id "
          "WHERE h.quantity > 0 ORDER BY s.code",
          "SELECT entry_date, kind, amount FROM money_entry ORDER BY entry_date, kind, amount",
          "SELECT cash FROM account"}) {
        Rows rows = ledger->database()->run(QLatin1String(query));
        while (rows.next()) {
            std::string line;
            for (int i = 0; rows.value(i).isValid(); ++i) {
                line += rows.value(i).toString().toStdString() + " ";
            }
            books.push_back(line);
        }
    }
    return books;
}

} // namespace TradeModule
