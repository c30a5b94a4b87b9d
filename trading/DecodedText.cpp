#include "trading/DecodedText.h"

#include <QList>
#include <QTextCodec>

namespace Trading {

namespace {

std::optional<QString> decodedBy(const char *codecName, const QByteArray &bytes)
{
    const QTextCodec *codec = QTextCodec::codecForName(codecName);
    if (codec == nullptr) {
        return std::nullopt;
    }
    QTextCodec::ConverterState state;
    const QString text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? std::optional(text) : std::nullopt;
}

bool isUtf16(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

} // namespace

std::optional<QString> decodedText(const QByteArray &bytes)
{
    const QList<const char *> encodings =
        isUtf16(bytes) ? QList<const char *>{"UTF-16"} : QList<const char *>{"UTF-8", "GB18030"};
    for (const char *encoding : encodings) {
        std::optional<QString> text = decodedBy(encoding, bytes);
        if (text && !text->contains(QChar(QChar::Null))) {
            return text->startsWith(QChar(QChar::ByteOrderMark)) ? text->mid(1) : text;
        }
    }
    return std::nullopt;
}

} // namespace Trading
