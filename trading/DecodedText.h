#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>

class QTextCodec;

namespace Trading {

/// The encoding of a file, in whatever the programs of traders write: UTF-16 where a byte order mark says so,
/// else UTF-8, else GB18030 (of which GBK and GB2312 are parts). Null when the bytes are no text. Reads the
/// device to its end, piece by piece, and leaves it at its start.
QTextCodec *encodingOf(QIODevice *device);

/// The text of some bytes in the encoding that they have, see encodingOf(). Without a byte order mark of its
/// own. Nothing when the bytes are no text.
std::optional<QString> decodedText(const QByteArray &bytes);

} // namespace Trading
