#pragma once

#include "trademodule/import/SheetRow.h"

#include <QIODevice>
#include <QTextDecoder>

#include <memory>

namespace TradeModule {

/// The lines of a statement's text, one after the other, however they end: a file of any size is read in
/// little memory. A line break inside double quotes belongs to its line.
class TextLines
{
public:
    /// The device stays the caller's and outlives this object; it is read from its start.
    TextLines(QIODevice *device, const QTextCodec &codec);

    void visit(const RowVisitor &visitor, const ReadProgress &progress);

private:
    bool readLine(QString *line);
    bool readPiece();
    QString takeUntil(int end);
    qint64 bytesTaken() const;
    void joinQuoted(SheetRow *row);

    QIODevice *const m_device;
    const std::unique_ptr<QTextDecoder> m_decoder;
    QString m_text; ///< decoded and not taken yet, from m_start on
    int m_start = 0;
    int m_pieceBytes = 0; ///< of the piece that was read last
    int m_searched = 0;
    bool m_isAfterReturn = false; ///< the next character may be the second half of a line's end
    int m_line = 0;
    QStringList m_ahead; ///< lines that were read to look for the end of a quote
};

} // namespace TradeModule
