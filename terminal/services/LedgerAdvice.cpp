#include "terminal/services/LedgerAdvice.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

struct Advice
{
    const char *sign; ///< what the database says
    const char *text;
};

const Advice table[] = {
    {"file is not a database",
     QT_TRANSLATE_NOOP("LedgerAdvice",
                       "The file is no ledger or is damaged: name another one with --ledger, or bring "
                       "a copy of it back.")},
    {"malformed",
     QT_TRANSLATE_NOOP("LedgerAdvice",
                       "The file is no ledger or is damaged: name another one with --ledger, or bring "
                       "a copy of it back.")},
    {"unable to open database file",
     QT_TRANSLATE_NOOP("LedgerAdvice",
                       "See whether the folder of the ledger is there and may be written to.")},
    {"readonly database",
     QT_TRANSLATE_NOOP("LedgerAdvice", "See whether the ledger and its folder may be written to.")},
    {"disk is full", QT_TRANSLATE_NOOP("LedgerAdvice", "Make room on the disk of the ledger.")},
    {"disk I/O error",
     QT_TRANSLATE_NOOP("LedgerAdvice", "See whether the disk of the ledger is full or broken.")},
    {"connection to server",
     QT_TRANSLATE_NOOP("LedgerAdvice", "See whether the ledger's database server runs and can be reached.")},
};

} // namespace

QString ledgerAdvice(const QString &lastWords)
{
    for (const Advice &advice : table) {
        if (lastWords.contains(QLatin1String(advice.sign), Qt::CaseInsensitive)) {
            return QCoreApplication::translate("LedgerAdvice", advice.text);
        }
    }
    return {};
}

} // namespace Terminal
