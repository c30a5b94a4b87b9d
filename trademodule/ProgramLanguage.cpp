#include "trademodule/ProgramLanguage.h"

#include <QCoreApplication>

// Resources of a static library are linked only when they are asked for, from outside of a namespace.
static void useTranslations()
{
    Q_INIT_RESOURCE(trademodule_translations);
}

namespace TradeModule {

bool ProgramLanguage::set(const QString &word)
{
    if (word != QLatin1String("zh") && word != QLatin1String("en")) {
        return false;
    }
    if (word == m_word) {
        return true;
    }
    m_word = word;
    QCoreApplication::removeTranslator(&m_translator);
    if (word == QLatin1String("en")) {
        return true;
    }
    useTranslations();
    m_translator.load(QStringLiteral(":/i18n/trademodule_zh.qm"));
    return QCoreApplication::installTranslator(&m_translator);
}

QString translated(const char *source)
{
    return QCoreApplication::translate("TradeModule", source);
}

QString reasonOf(const QFileDevice &file)
{
    return QCoreApplication::translate("QIODevice", qUtf8Printable(file.errorString()));
}

} // namespace TradeModule
