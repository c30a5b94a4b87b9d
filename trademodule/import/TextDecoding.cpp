#include "trademodule/import/TextDecoding.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trading/DecodedText.h"

#include <optional>

namespace TradeModule {

namespace {

struct ForeignFormat
{
    const char *start;
    const char *what;
};

constexpr ForeignFormat foreignFormats[] = {
    {"\xD0\xCF\x11\xE0", QT_TR_NOOP("an Excel workbook (.xls)")},
    {"PK\x03\x04", QT_TR_NOOP("an Excel workbook (.xlsx)")},
    {"<html", QT_TR_NOOP("a web page")},
    {"<!doctype html", QT_TR_NOOP("a web page")},
    {"<table", QT_TR_NOOP("a web page")},
    {"<?xml", QT_TR_NOOP("an XML file")},
    {"%PDF", QT_TR_NOOP("a PDF file")},
};

void refuseForeignFormat(const QByteArray &bytes)
{
    const QByteArray start = bytes.left(64).trimmed().toLower();
    for (const ForeignFormat &format : foreignFormats) {
        if (start.startsWith(QByteArray(format.start).toLower())) {
            throw Error(translated("this is %1, not a text; open it and save it as CSV or tab-separated text")
                            .arg(translated(format.what)));
        }
    }
}

} // namespace

QString decodeStatement(const QByteArray &bytes)
{
    refuseForeignFormat(bytes);
    if (const std::optional<QString> text = Trading::decodedText(bytes)) {
        return *text;
    }
    throw Error(translated("the text is neither UTF-8 nor UTF-16 nor GBK; save it in one of these"));
}

} // namespace TradeModule
