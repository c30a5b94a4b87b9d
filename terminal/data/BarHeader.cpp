#include "terminal/data/BarHeader.h"

#include "terminal/data/BarStamp.h"
#include "terminal/data/CellNumber.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

constexpr int mostTitleLines = 20;
constexpr int mostNameLines = 4;
constexpr int leastPrices = 3; ///< of the four, in a line that names columns

QString text(const char *source)
{
    return QCoreApplication::translate("BarHeader", source);
}

QString toText(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

struct PriceWord
{
    PriceKind kind;
    const char *words;
};

constexpr PriceWord priceWords[] = {
    {PriceKind::Raw, "3 none raw no bfq 不复权 除权 未复权"},
    {PriceKind::Adjusted,
     "1 2 qfq hfq pre post forward backward front back 前复权 后复权 向前复权 向后复权 复权"},
};

/// Titles that name what cannot be read as days or minutes.
bool isOfOtherSpan(const QString &word)
{
    static const QRegularExpression span(QStringLiteral(u"^(周线|月线|季线|年线|周K线?|月K线?)$"));
    return span.match(word).hasMatch();
}

void takeTitle(std::string_view line, BarHeader *header)
{
    static const QRegularExpression marks(QStringLiteral(u"[\\s,;|:：（）()\"]+"));
    const QStringList words = toText(line).split(marks, Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const auto security = SecurityCode::of(word);
        if (security && !header->security) {
            header->security = security;
        } else if (priceKindOf(word) != PriceKind::Unknown && word.size() > 1) {
            header->prices = priceKindOf(word);
        } else if (isOfOtherSpan(word)) {
            header->problem = {header->lines + 1,
                               text("these are bars of weeks or months; the terminal makes those of days")};
        } else if (header->security && header->name.isEmpty() && !word.at(0).isDigit()) {
            header->name = word;
        }
    }
}

bool namesColumns(std::string_view line, CellSeparator separator)
{
    Cells cells;
    splitCells(line, separator, &cells);
    BarColumns columns;
    columns.take(cells);
    return columns.priceCount() >= leastPrices;
}

std::optional<CellSeparator> separatorOfHeader(std::string_view line)
{
    const auto *const separator =
        std::find_if(std::begin(cellSeparators), std::end(cellSeparators),
                     [line](CellSeparator candidate) { return namesColumns(line, candidate); });
    return separator == std::end(cellSeparators) ? std::nullopt : std::optional(*separator);
}

/// True for a line with neither a day nor a price: more names, units or codes.
bool continuesHeader(const Cells &cells, const BarColumns &columns)
{
    const bool hasDay = std::any_of(cells.begin(), cells.end(), [](std::string_view cell) {
        const auto form = BarStampForm::of(cell);
        return form && form->hasDate();
    });
    const auto isPrice = [&](BarColumn column) {
        return columns.has(column) && numberOf(cells[columns.place(column)]).has_value();
    };
    return cells.size() == columns.count() && !hasDay && !isPrice(BarColumn::Open) &&
           !isPrice(BarColumn::High) && !isPrice(BarColumn::Low) && !isPrice(BarColumn::Close);
}

/// True for a line that names the security instead of columns, once for each.
bool takeCodes(const Cells &cells, BarHeader *header)
{
    bool hasCode = false;
    for (const std::string_view cell : cells) {
        if (const auto security = SecurityCode::of(toText(cell))) {
            header->security = security;
            hasCode = true;
        }
    }
    return hasCode;
}

void takeNames(const Cells &cells, BarHeader *header)
{
    const QString error = header->columns.take(cells);
    ++header->lines;
    if (!error.isEmpty()) {
        header->problem = {header->lines, error};
    }
}

void takeFurtherNames(std::string_view *rest, BarHeader *header)
{
    Cells cells;
    for (int i = 0; i < mostNameLines && !rest->empty(); ++i) {
        std::string_view next = *rest;
        splitCells(takeLine(&next), header->separator, &cells);
        if (!continuesHeader(cells, header->columns)) {
            return;
        }
        if (takeCodes(cells, header)) {
            ++header->lines;
        } else {
            takeNames(cells, header);
        }
        *rest = next;
    }
}

LineProblem noHeader(std::string_view firstLine)
{
    return {1, text("the first line is \"%1\", and no line names the columns %2")
                   .arg(toText(firstLine).left(80), QStringLiteral("date,open,high,low,close,volume"))};
}

} // namespace

PriceKind priceKindOf(const QString &word)
{
    const auto *const row =
        std::find_if(std::begin(priceWords), std::end(priceWords), [&word](const PriceWord &candidate) {
            return QString::fromUtf8(candidate.words).split(QLatin1Char(' ')).contains(word.toLower());
        });
    return row == std::end(priceWords) ? PriceKind::Unknown : row->kind;
}

BarHeader takeBarHeader(std::string_view *text)
{
    BarHeader header;
    std::string_view firstLine;
    for (std::string_view rest = *text; !rest.empty() && header.lines < mostTitleLines;) {
        const std::string_view line = takeLine(&rest);
        if (header.lines == 0) {
            firstLine = line;
        }
        if (const auto separator = separatorOfHeader(line)) {
            header.separator = *separator;
            Cells cells;
            splitCells(line, *separator, &cells);
            takeNames(cells, &header);
            takeFurtherNames(&rest, &header);
            *text = rest;
            return header;
        }
        takeTitle(line, &header);
        ++header.lines;
    }
    header.problem = noHeader(firstLine);
    return header;
}

} // namespace Terminal
