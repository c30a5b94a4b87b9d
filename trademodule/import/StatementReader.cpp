#include "trademodule/import/StatementReader.h"

#include "trademodule/import/RowCollector.h"
#include "trademodule/import/StatementFile.h"

#include <QBuffer>

namespace TradeModule {

StatementContents readStatementFile(const QString &path, const ReadOptions &options,
                                    const ReadProgress &progress)
{
    RowCollector collector(options);
    StatementFile::visit(
        path, [&collector](const SheetRow &row) { collector.take(row); }, progress);
    return collector.finish();
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
