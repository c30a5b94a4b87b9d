#include "trademodule/import/StatementReader.h"

#include "trademodule/import/RowCollector.h"
#include "trademodule/import/StatementFile.h"

#include <QBuffer>

namespace TradeModule {

namespace {

using Visit = std::function<void(const RowVisitor &visitor)>;

StatementContents readOnce(const Visit &visit, const ReadOptions &options)
{
    RowCollector collector(options);
    visit([&collector](const SheetRow &row) { collector.take(row); });
    return collector.finish();
}

/// Whether amounts have signs is only known at the end: a statement without them is read once more.
StatementContents readRows(const Visit &visit, const ReadOptions &options)
{
    StatementContents contents = readOnce(visit, options);
    if (!contents.mayBeUnsigned) {
        return contents;
    }
    ReadOptions withoutSigns = options;
    withoutSigns.areAmountsUnsigned = true;
    return readOnce(visit, withoutSigns);
}

/// Tells the progress in rows.
void visitFile(const QString &path, const RowVisitor &visitor, const RowProgress &progress)
{
    qint64 rows = 0;
    const auto count = [&](const SheetRow &row) {
        ++rows;
        visitor(row);
    };
    ReadProgress byRows;
    if (progress) {
        byRows = [&](qint64 done, qint64 total) { progress(rows, done > 0 ? rows * total / done : rows); };
    }
    StatementFile::visit(path, count, byRows);
}

} // namespace

StatementContents readStatementFile(const QString &path, const ReadOptions &options,
                                    const RowProgress &progress)
{
    try {
        return readRows([&](const RowVisitor &visitor) { visitFile(path, visitor, progress); }, options);
    } catch (const StatementRefused &refused) {
        Refusal refusal = refused.refusal();
        refusal.file = path;
        throw StatementRefused(refusal);
    } catch (const Error &error) {
        throw StatementRefused({error.reason(), path});
    }
}

StatementContents readStatement(const QString &text, const ReadOptions &options)
{
    QByteArray bytes = text.toUtf8();
    return readRows(
        [&bytes](const RowVisitor &visitor) {
            QBuffer device(&bytes);
            device.open(QIODevice::ReadOnly);
            StatementFile::visitText(&device, visitor);
        },
        options);
}

} // namespace TradeModule
