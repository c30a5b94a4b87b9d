#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

class QTextCodec;

namespace TradeModule {

/// The encoding of a statement's text, see Trading::encodingOf(). An Error, with what to do instead, when the
/// bytes are no text.
QTextCodec *encodingOf(QIODevice *device);

/// An Error, with what to do instead, for bytes at a file's start that tell another format than text.
void refuseForeignFormat(const QByteArray &start);

/// The whole text of some bytes. An Error as above.
QString decodeStatement(const QByteArray &bytes);

} // namespace TradeModule
