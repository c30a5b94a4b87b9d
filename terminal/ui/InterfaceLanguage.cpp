#include "terminal/ui/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>

// Resources of a static library are linked only when they are asked for, from outside of a namespace.
static void useTranslations()
{
    Q_INIT_RESOURCE(tradeterminal_translations);
}

namespace Terminal {

void InterfaceLanguage::set(const QString &word)
{
    useTranslations();
    QCoreApplication::removeTranslator(&m_own);
    QCoreApplication::removeTranslator(&m_qt);
    if (word == QLatin1String("en")) {
        return;
    }
    if (m_qt.load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&m_qt);
    }
    if (m_own.load(QStringLiteral(":/i18n/tradeterminal_%1.qm").arg(word))) {
        QCoreApplication::installTranslator(&m_own);
    }
}

QLocale::Language InterfaceLanguage::localeLanguage(const QString &word)
{
    return word == QLatin1String("zh") ? QLocale::Chinese : QLocale::English;
}

} // namespace Terminal
