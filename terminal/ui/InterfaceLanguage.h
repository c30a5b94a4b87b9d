#pragma once

#include <QLocale>
#include <QString>
#include <QTranslator>

namespace Terminal {

/// The language of the program's own texts. Widgets hear of a change by QEvent::LanguageChange.
class InterfaceLanguage
{
public:
    /// "zh" or "en".
    void set(const QString &word);

    /// The locale language of "zh" or "en".
    static QLocale::Language localeLanguage(const QString &word);

private:
    QTranslator m_own;
    QTranslator m_qt;
};

} // namespace Terminal
