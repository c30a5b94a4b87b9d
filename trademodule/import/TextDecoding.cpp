#include "trademodule/import/TextDecoding.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <QBuffer>
#include <QTextCodec>

namespace TradeModule {

namespace {

constexpr int pieceSize = 1 << 16;

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

bool isUtf16(const QByteArray &start)
{
    return start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF");
}

/// True when the encoding has a character for all of the bytes, and none is a null.
bool reads(QIODevice *device, const QTextCodec &codec)
{
    device->seek(0);
    QTextCodec::ConverterState state;
    while (!device->atEnd()) {
        const QByteArray piece = device->read(pieceSize);
        const QString text = codec.toUnicode(piece.constData(), piece.size(), &state);
        if (piece.isEmpty() || state.invalidChars > 0 || text.contains(QChar(QChar::Null))) {
            return false;
        }
    }
    return state.remainingChars == 0;
}

} // namespace

void refuseForeignFormat(const QByteArray &start)
{
    for (const ForeignFormat &format : foreignFormats) {
        if (start.startsWith(format.start)) {
            throw Error(translated("this is %1, not a text; open it and save it as CSV or tab-separated text")
                            .arg(translated(format.what)));
        }
    }
}

QTextCodec *encodingOf(QIODevice *device)
{
    const QByteArray start = device->peek(2);
    const QList<const char *> encodings =
        isUtf16(start) ? QList<const char *>{"UTF-16"} : QList<const char *>{"UTF-8", "GB18030"};
    for (const char *encoding : encodings) {
        QTextCodec *const codec = QTextCodec::codecForName(encoding);
        if (codec != nullptr && reads(device, *codec)) {
            device->seek(0);
            return codec;
        }
    }
    throw Error(translated("the text is neither UTF-8 nor UTF-16 nor GBK; save it in one of these"));
}

QString decodeStatement(const QByteArray &bytes)
{
    refuseForeignFormat(bytes);
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    const QTextCodec *const codec = encodingOf(&device);
    const QString text = codec->toUnicode(bytes);
    return text.startsWith(QChar(QChar::ByteOrderMark)) ? text.mid(1) : text;
}

} // namespace TradeModule
