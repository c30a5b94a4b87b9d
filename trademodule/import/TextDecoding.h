#pragma once

#include <QByteArray>
#include <QString>

namespace TradeModule {

/// The text of a statement file in whatever encoding brokers' clients write: UTF-8, UTF-16 with a byte
/// order mark, else GB18030 (of which GBK and GB2312 are parts). An Error, with what to do instead, when
/// the bytes are no text: a workbook or a web page under a wrong suffix.
QString decodeStatement(const QByteArray &bytes);

} // namespace TradeModule
