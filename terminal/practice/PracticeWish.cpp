#include "terminal/practice/PracticeWish.h"

#include "trading/HiddenPasswords.h"

namespace Terminal {

QStringList moduleWords(const PracticeWish &wish, const QString &language)
{
    QStringList words{QStringLiteral("--lang"), language, QStringLiteral("practice"), QStringLiteral("--day"),
                      wish.day.text()};
    if (wish.copiedLedger.isEmpty()) {
        words << QStringLiteral("--cash") << QString::number(wish.cash, 'f', 2);
        if (wish.shares > 0) {
            words << QStringLiteral("--hold")
                  << QStringLiteral("%1 %2 %3")
                         .arg(wish.code)
                         .arg(wish.shares)
                         .arg(QString::number(wish.costPrice, 'f', 4));
        }
    }
    return words;
}

QProcessEnvironment moduleEnvironment(const PracticeWish &wish, const QString &newLedger)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), newLedger);
    environment.remove(QLatin1String(Trading::copiedLedgerVariable));
    if (!wish.copiedLedger.isEmpty()) {
        environment.insert(QLatin1String(Trading::copiedLedgerVariable), wish.copiedLedger);
    }
    return environment;
}

} // namespace Terminal
