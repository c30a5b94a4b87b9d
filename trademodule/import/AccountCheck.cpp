#include "trademodule/import/AccountCheck.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/StatementRefused.h"

#include <algorithm>

namespace TradeModule::AccountCheck {

namespace {

/// One person has a shareholder's code for each market, told by its first letter.
bool isOfSameMarket(const QString &a, const QString &b)
{
    return a.left(1).compare(b.left(1), Qt::CaseInsensitive) == 0;
}

bool isAmong(const QString &holder, const QStringList &known)
{
    const bool hasOther = std::any_of(known.begin(), known.end(), [&holder](const QString &other) {
        return isOfSameMarket(holder, other);
    });
    return !hasOther || known.contains(holder, Qt::CaseInsensitive);
}

void refuse(const QString &found, const QStringList &known, const StatementContents &contents)
{
    throw StatementRefused(
        {translated("the statement is of the account %1, the ledger of %2: use a ledger of "
                    "its own, or take it into this one with --account %1")
             .arg(found, known.join(QStringLiteral(", "))),
         {},
         contents.accounts});
}

} // namespace

void refuseAnother(const StatementContents &contents, const QVector<ImportedStatement> &before)
{
    QStringList accounts;
    QStringList holders;
    for (const ImportedStatement &statement : before) {
        accounts += statement.account.split(QStringLiteral(", "), Qt::SkipEmptyParts);
        holders += statement.holders;
    }
    accounts.removeDuplicates();
    holders.removeDuplicates();
    if (!contents.account.isEmpty() && !accounts.isEmpty() && !accounts.contains(contents.account)) {
        refuse(contents.account, accounts, contents);
    }
    for (const QString &holder : contents.holders) {
        if (!isAmong(holder, holders)) {
            refuse(holder, holders, contents);
        }
    }
}

} // namespace TradeModule::AccountCheck
