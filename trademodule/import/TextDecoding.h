#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

class QTextCodec;

namespace TradeModule {

/// The encoding of a statement's text, in whatever brokers' clients write: UTF-8, UTF-16 with a byte order
/// mark, else GB18030 (of which GBK and GB2312 are parts). Reads the device from its start to its end, piece
/// by piece. An Error, with what to do instead, when the bytes are no text.
QTextCodec *encodingOf(QIODevice *device);

/// An Error, with what to do instead, for bytes at a file's start that tell another format than text.
void refuseForeignFormat(const QByteArray &start);

/// The whole text of some bytes. An Error as above.
QString decodeStatement(const QByteArray &bytes);

} // namespace TradeModule
