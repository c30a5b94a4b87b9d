#include "trademodule/import/MarkupTable.h"

#include <QRegularExpression>

#include <algorithm>

namespace TradeModule::MarkupTable {

namespace {

constexpr int mostCells = 1000; ///< of a row, however wide a cell says that it is

struct Entity
{
    const char *name;
    ushort character;
};

constexpr Entity entities[] = {{"nbsp", ' '}, {"amp", '&'},   {"lt", '<'},  {"gt", '>'},
                               {"quot", '"'}, {"apos", '\''}, {"yen", 0xA5}};

/// The character of what stands between & and ;, or nothing.
QString characterOf(const QString &name)
{
    if (name.startsWith(QLatin1Char('#'))) {
        const bool isHex = name.mid(1, 1).compare(QLatin1String("x"), Qt::CaseInsensitive) == 0;
        const uint code = isHex ? name.mid(2).toUInt(nullptr, 16) : name.mid(1).toUInt();
        return code > 0 && code <= 0x10FFFF ? QString::fromUcs4(&code, 1) : QString();
    }
    for (const Entity &entity : entities) {
        if (name == QLatin1String(entity.name)) {
            return QChar(entity.character);
        }
    }
    return QString();
}

QString plainText(const QString &markup)
{
    QString text;
    for (int i = 0; i < markup.size(); ++i) {
        constexpr int longestEntity = 10;
        const int end = markup[i] == QLatin1Char('&') ? markup.indexOf(QLatin1Char(';'), i) : -1;
        const QString character =
            end > 0 && end - i <= longestEntity ? characterOf(markup.mid(i + 1, end - i - 1)) : QString();
        if (character.isEmpty()) {
            text += markup[i];
        } else {
            text += character;
            i = end;
        }
    }
    return text.simplified();
}

/// A tag: "<td colspan=2>" is "td" with its attributes, "</td>" is "/td".
struct Tag
{
    QString name; ///< lower case, without a name space's prefix
    QString attributes;
    bool isEmpty = false; ///< closes itself
};

Tag parsedTag(const QString &inside)
{
    const QString text = inside.endsWith(QLatin1Char('/')) ? inside.left(inside.size() - 1) : inside;
    const auto end =
        std::find_if(text.begin(), text.end(), [](QChar character) { return character.isSpace(); });
    const QString name = text.left(static_cast<int>(end - text.begin())).toLower();
    const bool isClosing = name.startsWith(QLatin1Char('/'));
    const QString local = name.section(QLatin1Char(':'), -1);
    const bool isPrefixed = isClosing && name.contains(QLatin1Char(':'));
    return {isPrefixed ? QLatin1Char('/') + local : local, text.mid(name.size()),
            text.size() != inside.size()};
}

int attribute(const Tag &tag, const char *name)
{
    const QRegularExpression form(
        QStringLiteral("(?:^|[\\s:])%1\\s*=\\s*[\"']?(\\d{1,6})").arg(QLatin1String(name)),
        QRegularExpression::CaseInsensitiveOption);
    return form.match(tag.attributes).captured(1).toInt();
}

class Reader
{
public:
    Reader(const QString &text, const RowVisitor &visitor) : m_text(text), m_visitor(visitor) {}

    void read();

private:
    void take(const Tag &tag);
    void beginRow();
    void endRow();
    void beginCell(const Tag &tag);
    void endCell();
    int skipComment(int at) const;

    const QString &m_text;
    const RowVisitor &m_visitor;
    SheetRow m_row;
    bool m_isInRow = false;
    bool m_isInCell = false;
    bool m_isHidden = false; ///< inside of a style or a script
    QString m_cell;
    int m_width = 1;
    int m_line = 1;
};

int Reader::skipComment(int at) const
{
    if (!m_text.midRef(at, 4).startsWith(QLatin1String("<!--"))) {
        return at;
    }
    const int end = m_text.indexOf(QLatin1String("-->"), at);
    return end < 0 ? m_text.size() : end + 3;
}

void Reader::read()
{
    for (int i = 0; i < m_text.size();) {
        const int next = skipComment(i);
        if (next != i) {
            m_line += m_text.midRef(i, next - i).count(QLatin1Char('\n'));
            i = next;
        } else if (m_text[i] == QLatin1Char('<')) {
            const int end = m_text.indexOf(QLatin1Char('>'), i);
            if (end < 0) {
                break;
            }
            take(parsedTag(m_text.mid(i + 1, end - i - 1)));
            m_line += m_text.midRef(i, end - i).count(QLatin1Char('\n'));
            i = end + 1;
        } else {
            m_line += m_text[i] == QLatin1Char('\n') ? 1 : 0;
            if (m_isInCell && !m_isHidden) {
                m_cell += m_text[i];
            }
            ++i;
        }
    }
    endRow();
}

void Reader::take(const Tag &tag)
{
    if (tag.name == QLatin1String("tr") || tag.name == QLatin1String("row")) {
        beginRow();
    } else if (tag.name == QLatin1String("/tr") || tag.name == QLatin1String("/row") ||
               tag.name == QLatin1String("/table")) {
        endRow();
    } else if (tag.name == QLatin1String("td") || tag.name == QLatin1String("th") ||
               tag.name == QLatin1String("cell")) {
        beginCell(tag);
    } else if (tag.name == QLatin1String("/td") || tag.name == QLatin1String("/th") ||
               tag.name == QLatin1String("/cell")) {
        endCell();
    } else if (tag.name == QLatin1String("br")) {
        m_cell += QLatin1Char(' ');
    } else if (tag.name.endsWith(QLatin1String("style")) || tag.name.endsWith(QLatin1String("script"))) {
        m_isHidden = !tag.name.startsWith(QLatin1Char('/')) && !tag.isEmpty;
    }
}

void Reader::beginRow()
{
    endRow();
    m_isInRow = true;
    m_row = {m_line, QString(), {}, true};
}

void Reader::endRow()
{
    endCell();
    if (m_isInRow && !m_row.cells.isEmpty()) {
        m_visitor(m_row);
    }
    m_isInRow = false;
}

void Reader::beginCell(const Tag &tag)
{
    endCell();
    if (!m_isInRow) {
        return;
    }
    // a spreadsheet leaves empty cells out and gives the next one its place
    const int place = std::min(attribute(tag, "index"), mostCells);
    while (m_row.cells.size() + 1 < place) {
        m_row.cells.append(QString());
    }
    m_isInCell = true;
    m_cell.clear();
    m_width = std::clamp(attribute(tag, "colspan"), 1, mostCells);
    if (tag.isEmpty) {
        endCell();
    }
}

void Reader::endCell()
{
    if (!m_isInCell) {
        return;
    }
    m_isInCell = false;
    m_row.cells.append(plainText(m_cell));
    for (int i = 1; i < m_width && m_row.cells.size() < mostCells; ++i) {
        m_row.cells.append(QString());
    }
}

} // namespace

bool isMarkup(const QString &start)
{
    return start.trimmed().startsWith(QLatin1Char('<'));
}

void visit(const QString &text, const RowVisitor &visitor)
{
    Reader(text, visitor).read();
}

} // namespace TradeModule::MarkupTable
