#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace Trading {

/// The text of a file in whatever encoding the programs of traders write: UTF-16 where a byte order mark says
/// so, else UTF-8, else GB18030 (of which GBK and GB2312 are parts). Without a byte order mark of its own.
/// Nothing when the bytes are no text.
std::optional<QString> decodedText(const QByteArray &bytes);

} // namespace Trading
