#pragma once

#include <QByteArray>
#include <QString>

namespace TradeModule {

/// The text of a statement file in whatever encoding brokers' clients write, see Trading::decodedText(). An
/// Error, with what to do instead, when the bytes are no text: a workbook or a web page under a wrong suffix.
QString decodeStatement(const QByteArray &bytes);

} // namespace TradeModule
