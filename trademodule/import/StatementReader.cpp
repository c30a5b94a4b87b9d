#include "trademodule/import/StatementReader.h"

#include "trademodule/import/RowCollector.h"
#include "trademodule/import/StatementFile.h"

#include <QBuffer>

namespace TradeModule {

StatementContents readStatementFile(const QString &path, const ReadOptions &options,
                                    const RowProgress &progress)
{
    RowCollector collector(options);
    qint64 rows = 0;
    const auto takeRow = [&](const SheetRow &row) {
        ++rows;
        collector.take(row);
    };
    ReadProgress byRows;
    if (progress) {
        byRows = [&](qint64 done, qint64 total) { progress(rows, done > 0 ? rows * total / done : rows); };
    }
    try {
        StatementFile::visit(path, takeRow, byRows);
        return collector.finish();
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
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    RowCollector collector(options);
    StatementFile::visitText(&device, [&collector](const SheetRow &row) { collector.take(row); });
    return collector.finish();
}

} // namespace TradeModule
