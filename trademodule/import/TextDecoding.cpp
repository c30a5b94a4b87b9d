#include "trademodule/import/TextDecoding.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trading/DecodedText.h"

namespace TradeModule {

namespace {

struct ForeignFormat
{
    const char *start;
    const char *what;
};

constexpr ForeignFormat foreignFormats[] = {
    {"\xD0\xCF\x11\xE0", QT_TR_NOOP("an Excel workbook (.xls)")},
    {"PK\x03\x04", QT_TR_NOOP("a zip archive")},
    {"%PDF", QT_TR_NOOP("a PDF file")},
    {"Rar!", QT_TR_NOOP("a packed archive")},
    {"\x1F\x8B", QT_TR_NOOP("a packed archive")},
};

/// What holds no statement in any form.
constexpr ForeignFormat strangeFormats[] = {
    {"\x89PNG", QT_TR_NOOP("a picture")},
    {"\xFF\xD8\xFF", QT_TR_NOOP("a picture")},
    {"GIF8", QT_TR_NOOP("a picture")},
    {"SQLite format 3", QT_TR_NOOP("a ledger or another database")},
};

} // namespace

void refuseForeignFormat(const QByteArray &start)
{
    for (const ForeignFormat &format : strangeFormats) {
        if (start.startsWith(format.start)) {
            throw Error(translated("this is no text, but %1").arg(translated(format.what)));
        }
    }
    for (const ForeignFormat &format : foreignFormats) {
        if (start.startsWith(format.start)) {
            throw Error(translated("this is %1, not a text; open it and save it as .xlsx or CSV")
                            .arg(translated(format.what)));
        }
    }
}

QTextCodec *encodingOf(QIODevice *device)
{
    if (QTextCodec *const codec = Trading::encodingOf(device)) {
        return codec;
    }
    throw Error(translated("the text is neither UTF-8 nor UTF-16 nor GBK; save it in one of these"));
}

QString decodeStatement(const QByteArray &bytes)
{
    refuseForeignFormat(bytes);
    if (const std::optional<QString> text = Trading::decodedText(bytes)) {
        return *text;
    }
    throw Error(translated("the text is neither UTF-8 nor UTF-16 nor GBK; save it in one of these"));
}

} // namespace TradeModule
