#include "trademodule/import/TextLines.h"

#include <QTextCodec>

#include <algorithm>

namespace TradeModule {

namespace {

constexpr int pieceSize = 1 << 16;
constexpr int mostLinesOfARow = 8; ///< a quote that goes on for longer is a stray one

bool endsLine(QChar character)
{
    constexpr ushort lineSeparator = 0x2028;
    constexpr ushort paragraphSeparator = 0x2029;
    return character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
           character == QChar(lineSeparator) || character == QChar(paragraphSeparator);
}

bool isOpenQuote(const QString &line)
{
    return line.count(QLatin1Char('"')) % 2 != 0;
}

} // namespace

TextLines::TextLines(QIODevice *device, const QTextCodec &codec)
    : m_device(device),
      m_decoder(codec.makeDecoder())
{
    m_device->seek(0);
}

bool TextLines::readPiece()
{
    if (m_device->atEnd()) {
        return false;
    }
    m_text.remove(0, m_start);
    m_searched -= m_start;
    m_start = 0;
    const QByteArray piece = m_device->read(pieceSize);
    m_pieceBytes = piece.size();
    m_text += m_decoder->toUnicode(piece);
    return true;
}

QString TextLines::takeUntil(int end)
{
    QString line = m_text.mid(m_start, end - m_start);
    m_start = std::min(end + 1, m_text.size());
    m_searched = m_start;
    return line;
}

bool TextLines::readLine(QString *line)
{
    while (true) {
        if (m_isAfterReturn && m_start < m_text.size()) {
            m_isAfterReturn = false;
            const bool isSecondHalf = m_text[m_start] == QLatin1Char('\n');
            m_start += isSecondHalf ? 1 : 0;
            m_searched = m_start;
        }
        const auto end = std::find_if(m_text.cbegin() + m_searched, m_text.cend(), &endsLine);
        if (end != m_text.cend()) {
            m_isAfterReturn = *end == QLatin1Char('\r');
            *line = takeUntil(static_cast<int>(end - m_text.cbegin()));
            return true;
        }
        m_searched = m_text.size();
        if (!readPiece()) {
            *line = takeUntil(m_text.size());
            return !line->isEmpty();
        }
    }
}

/// Joins the lines of a quote that is open at the line's end.
void TextLines::joinQuoted(SheetRow *row)
{
    if (!isOpenQuote(row->text)) {
        return;
    }
    QString joined = row->text;
    QStringList ahead;
    QString next;
    while (ahead.size() < mostLinesOfARow && (m_ahead.isEmpty() ? readLine(&next) : true)) {
        next = m_ahead.isEmpty() ? next : m_ahead.takeFirst();
        ahead.append(next);
        joined += QLatin1Char('\n') + next;
        if (isOpenQuote(next)) {
            row->text = joined;
            m_line += ahead.size();
            return;
        }
    }
    m_ahead = ahead + m_ahead;
}

/// As far as one can tell: characters take one to four bytes.
qint64 TextLines::bytesTaken() const
{
    const qint64 left = m_text.size() - m_start;
    return m_device->pos() - m_pieceBytes * left / std::max(m_text.size(), 1);
}

void TextLines::visit(const RowVisitor &visitor, const ReadProgress &progress)
{
    constexpr int linesBetweenReports = 2000;
    const qint64 total = m_device->size();
    SheetRow row;
    while (m_ahead.isEmpty() ? readLine(&row.text) : true) {
        if (!m_ahead.isEmpty()) {
            row.text = m_ahead.takeFirst();
        }
        row.line = ++m_line;
        joinQuoted(&row);
        visitor(row);
        if (progress && m_line % linesBetweenReports == 0) {
            progress(bytesTaken(), total);
        }
    }
}

} // namespace TradeModule
