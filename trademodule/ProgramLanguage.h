#pragma once

#include <QFileDevice>
#include <QString>
#include <QTranslator>

namespace TradeModule {

/// The language in which the program speaks to people. What programs read stays the same in each: keys,
/// JSON, commands and options.
class ProgramLanguage
{
public:
    /// "zh" or "en"; false, and nothing changes, for any other word. Texts made before keep theirs.
    bool set(const QString &word);

private:
    QTranslator m_translator;
    QString m_word;
};

/// A text in the language of the program. `source` is the English one, written out where this is called,
/// or marked with QT_TR_NOOP("...") in a table; its translation is in translations/trademodule_zh.ts.
QString translated(const char *source);

/// Why a file could not be opened, read or written, in the language of the program.
QString reasonOf(const QFileDevice &file);

} // namespace TradeModule
