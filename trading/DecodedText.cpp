#include "trading/DecodedText.h"

#include <QBuffer>
#include <QList>
#include <QTextCodec>

namespace Trading {

namespace {

bool isUtf16(const QByteArray &start)
{
    return start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF");
}

/// True when the encoding has a character for all of the bytes, and none is a null.
bool reads(QIODevice *device, const QTextCodec &codec)
{
    constexpr int pieceSize = 1 << 16;
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
    return nullptr;
}

std::optional<QString> decodedText(const QByteArray &bytes)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    const QTextCodec *const codec = encodingOf(&device);
    if (codec == nullptr) {
        return std::nullopt;
    }
    const QString text = codec->toUnicode(bytes);
    return text.startsWith(QChar(QChar::ByteOrderMark)) ? text.mid(1) : text;
}

} // namespace Trading
