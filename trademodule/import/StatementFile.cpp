#include "trademodule/import/StatementFile.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/MarkupTable.h"
#include "trademodule/import/TextDecoding.h"
#include "trademodule/import/TextLines.h"
#include "trademodule/import/Workbook.h"

#include <QFile>
#include <QTextCodec>

namespace TradeModule::StatementFile {

namespace {

constexpr int lookedAt = 1024; // bytes

bool isArchive(const QByteArray &start)
{
    return start.startsWith("PK\x03\x04");
}

} // namespace

void visitText(QIODevice *device, const RowVisitor &visitor, const ReadProgress &progress)
{
    refuseForeignFormat(device->peek(lookedAt));
    const QTextCodec *const codec = encodingOf(device);
    const QString start = codec->toUnicode(device->peek(lookedAt));
    if (!MarkupTable::isMarkup(start)) {
        TextLines(device, *codec).visit(visitor, progress);
        return;
    }
    constexpr qint64 mostMarkup = qint64(256) << 20; // held in memory as a whole
    if (device->size() > mostMarkup) {
        throw Error(translated("the page is too large; save it as CSV"));
    }
    MarkupTable::visit(codec->toUnicode(device->readAll()), visitor);
}

void visit(const QString &path, const RowVisitor &visitor, const ReadProgress &progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(translated("cannot be read: %1").arg(reasonOf(file)));
    }
    if (isArchive(file.peek(lookedAt))) {
        Workbook::visit(path, visitor, progress);
    } else {
        visitText(&file, visitor, progress);
    }
}

} // namespace TradeModule::StatementFile
