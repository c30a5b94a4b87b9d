#include "tests/fuzz/EmptyLedger.h"
#include "tests/fuzz/Properties.h"

#include "tests/trademodule/support/LedgerBooks.h"
#include "trademodule/Error.h"
#include "trademodule/import/StatementImport.h"

#include <QFile>
#include <QTemporaryDir>

#include <zip.h>

#include <utility>
#include <vector>

using namespace TradeModule;

namespace {

using Parts = std::vector<std::pair<const char *, QByteArray>>;

void writeArchive(const QString &path, const Parts &parts)
{
    QFile::remove(path);
    zip *const archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE, nullptr);
    for (const auto &[name, bytes] : parts) {
        zip_source *const source =
            zip_source_buffer(archive, bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0);
        zip_file_add(archive, name, source, ZIP_FL_ENC_UTF_8);
    }
    zip_close(archive);
}

/// A workbook whose first sheet, or of three parts sheet, texts and relations, are the bytes: a fuzzer would
/// not find what an archive's checksums let through.
void writeWorkbook(const QString &path, const QByteArray &bytes)
{
    const QList<QByteArray> parts = bytes.split('\f');
    const QByteArray texts = parts.value(1, "<sst><si><t>成交日期</t></si><si><t>证券代码</t></si>"
                                            "<si><t>买卖标志</t></si><si><t>成交数量</t></si>"
                                            "<si><t>成交价格</t></si><si><t>买入</t></si></sst>");
    const QByteArray relations = parts.value(
        2, "<Relationships><Relationship Id=\"r1\" Target=\"worksheets/sheet1.xml\"/></Relationships>");
    writeArchive(
        path,
        {{"xl/workbook.xml",
          "<workbook xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>"
          "<sheet name=\"a\" sheetId=\"1\" r:id=\"r1\"/></sheets></workbook>"},
         {"xl/_rels/workbook.xml.rels", relations},
         {"xl/sharedStrings.xml", texts},
         {"xl/worksheets/sheet1.xml",
          "<worksheet><sheetData>" + parts.first() + "</sheetData></worksheet>"}});
}

/// The file of a statement: what begins with "W:" is of a workbook, everything else is the file itself.
QString written(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("statement"));
    if (bytes.startsWith("W:")) {
        writeWorkbook(path, bytes.mid(2));
        return path;
    }
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return path;
}

/// What the entries of a statement come to.
struct Sums
{
    qint64 entries = 0;
    qint64 shares = 0;
    qint64 amount = 0;
    qint64 fee = 0;

    bool operator==(const Sums &other) const
    {
        return entries == other.entries && shares == other.shares && amount == other.amount &&
               fee == other.fee;
    }
    std::string text() const
    {
        return std::to_string(entries) + " entries, " + std::to_string(shares) + " shares, " +
               std::to_string(amount) + ", " + std::to_string(fee);
    }
};

Sums sumsOf(const Executions &executions)
{
    Sums sums;
    for (const Execution &execution : executions) {
        ++sums.entries;
        sums.shares += takesShares(execution.side) ? -execution.quantity : execution.quantity;
        sums.amount += execution.amount.steps();
        sums.fee += execution.fee.steps();
    }
    return sums;
}

Sums sumsIn(Ledger *ledger)
{
    Rows row = ledger->database()->run(QStringLiteral(
        "SELECT COUNT(*), SUM(CASE WHEN side IN ('S', 'M', 'O') THEN -quantity ELSE quantity END), "
        "SUM(amount), SUM(fee) FROM execution"));
    row.next();
    return {row.value(0).toLongLong(), row.value(1).toLongLong(), row.value(2).toLongLong(),
            row.value(3).toLongLong()};
}

void checkBadRows(const StatementContents &contents)
{
    for (const BadRow &row : contents.badRows) {
        demand(row.line > 0 && !row.reason.isEmpty(), "a bad row has no line or no reason");
    }
    demand(contents.badRowCount >= contents.badRows.size(), "fewer bad rows are counted than told");
}

/// The import, or nothing when the statement is refused.
std::optional<ImportReport> import(const QString &path, Ledger *ledger)
{
    ImportOptions options;
    options.skipsBadRows = true;
    try {
        return importStatement(path, options, ledger);
    } catch (const Error &error) {
        demand(error.reason().startsWith(path),
               "a refusal does not name the file: " + std::string(error.what()));
        return std::nullopt;
    }
}

void checkBooked(const ImportReport &report, Ledger *ledger)
{
    const Booked &booked = report.booked;
    const Sums read = sumsOf(report.contents.executions);
    const Sums kept = sumsIn(ledger);
    demand(read == kept, "read were " + read.text() + ", booked are " + kept.text());
    demand(booked.added == read.entries, "not every entry counts as added");
    demand(booked.moneyAdded == report.contents.money.size(), "not every movement of money counts as added");
}

/// Booked once more, a statement changes nothing.
qint64 checkAgain(const QString &path, Ledger *ledger)
{
    const std::vector<std::string> books = booksOf(ledger);
    const std::optional<ImportReport> again = import(path, ledger);
    demand(again.has_value(), "what was booked is refused the second time");
    demand(again->booked.added == 0 && again->booked.moneyAdded == 0 && booksOf(ledger) == books,
           "a second import of the same changes the books");
    return again->booked.number;
}

void undo(qint64 number, Ledger *ledger)
{
    if (number != 0) {
        ledger->undoImport(number);
    }
}

} // namespace

void checkStatements(const QByteArray &bytes)
{
    const QString path = written(bytes);
    const EmptyLedger home;
    Ledger ledger(home.location());
    const std::vector<std::string> before = booksOf(&ledger);
    const std::optional<ImportReport> report = import(path, &ledger);
    if (report) {
        checkBadRows(report->contents);
        remarksOn(*report);
        describe(*report, path, {});
    }
    if (!report || report->isRefused) {
        demand(booksOf(&ledger) == before, "a refused statement left something in the books");
        return;
    }
    checkBooked(*report, &ledger);
    const qint64 again = checkAgain(path, &ledger);
    undo(report->booked.number, &ledger);
    undo(again, &ledger);
    demand(booksOf(&ledger) == before, "imports that were taken back left something in the books");
}
