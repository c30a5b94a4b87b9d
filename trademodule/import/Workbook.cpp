#include "trademodule/import/Workbook.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/ZipArchive.h"

#include <QHash>
#include <QVector>
#include <QXmlStreamReader>

namespace TradeModule::Workbook {

namespace {

// A small file can hold anything: what is beyond these is no statement.
constexpr int mostCells = 1000; // of a row
constexpr int mostRows = 1 << 21;
constexpr qint64 mostTextBytes = qint64(128) << 20; // of the texts that the sheets share
constexpr int mostCellText = 1 << 15;
constexpr int mostSheets = 64;

[[noreturn]] void refuseSize()
{
    throw Error(translated("the workbook holds more than any statement does"));
}

void refuseDamage(const QXmlStreamReader &xml, const ZipEntry &entry)
{
    if (entry.isTooLarge()) {
        refuseSize();
    }
    if (xml.hasError()) {
        throw Error(translated("the workbook is damaged: %1").arg(xml.errorString()));
    }
}

/// The text of an element up to its end, without the readings that stand above Chinese characters.
QString textOf(QXmlStreamReader *xml)
{
    QString text;
    for (int depth = 1; depth > 0 && !xml->atEnd();) {
        switch (xml->readNext()) {
        case QXmlStreamReader::StartElement:
            if (xml->name() == QLatin1String("rPh")) {
                xml->skipCurrentElement();
            } else {
                ++depth;
            }
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            text += xml->text();
            break;
        default:
            break;
        }
        if (text.size() > mostCellText) {
            refuseSize();
        }
    }
    return text;
}

/// The texts that cells refer to by number.
QVector<QString> sharedTexts(const ZipArchive &archive)
{
    const QString name = QStringLiteral("xl/sharedStrings.xml");
    QVector<QString> texts;
    if (!archive.has(name)) {
        return texts;
    }
    ZipEntry entry(archive, name, mostTextBytes);
    QXmlStreamReader xml(&entry);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("si")) {
            texts.append(textOf(&xml));
        }
    }
    refuseDamage(xml, entry);
    return texts;
}

/// Each element of a name in a file, by two of its attributes.
QVector<QPair<QString, QString>> attributesIn(const ZipArchive &archive, const QString &file,
                                              const char *element, const char *first, const char *second)
{
    ZipEntry entry(archive, file);
    QXmlStreamReader xml(&entry);
    QVector<QPair<QString, QString>> found;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String(element)) {
            continue;
        }
        QPair<QString, QString> row;
        for (const QXmlStreamAttribute &attribute : xml.attributes()) {
            if (attribute.name() == QLatin1String(first)) {
                row.first = attribute.value().toString();
            } else if (attribute.qualifiedName() == QLatin1String(second)) {
                row.second = attribute.value().toString();
            }
        }
        found.append(row);
        if (found.size() > mostSheets * 16) {
            refuseSize();
        }
    }
    refuseDamage(xml, entry);
    return found;
}

struct SheetFile
{
    QString name; ///< as a user sees it
    QString file;
};

/// In the order in which a user sees them.
QVector<SheetFile> sheetFiles(const ZipArchive &archive)
{
    QHash<QString, QString> targets;
    for (const auto &row : attributesIn(archive, QStringLiteral("xl/_rels/workbook.xml.rels"), "Relationship",
                                        "Id", "Target")) {
        targets.insert(row.first, row.second);
    }
    QVector<SheetFile> files;
    for (const auto &row :
         attributesIn(archive, QStringLiteral("xl/workbook.xml"), "sheet", "name", "r:id")) {
        const QString target = targets.value(row.second);
        const QString file =
            target.startsWith(QLatin1Char('/')) ? target.mid(1) : QStringLiteral("xl/") + target;
        if (archive.has(file) && files.size() < mostSheets) {
            files.append({row.first, file});
        }
    }
    return files;
}

/// "C7" is the third column.
int columnOf(const QStringRef &reference)
{
    int column = 0;
    for (const QChar character : reference) {
        if (character < QLatin1Char('A') || character > QLatin1Char('Z') || column > mostCells) {
            break;
        }
        column = column * 26 + character.unicode() - 'A' + 1;
    }
    return column;
}

class Sheet
{
public:
    Sheet(const QString &name, const QVector<QString> &texts, const RowVisitor &visitor)
        : m_name(name),
          m_texts(texts),
          m_visitor(visitor)
    {
    }

    void read(ZipEntry *entry);

private:
    void readRow(QXmlStreamReader *xml);
    void readCell(QXmlStreamReader *xml);
    QString valueOf(QXmlStreamReader *xml, const QString &type) const;

    const QString m_name; ///< empty for the only one
    const QVector<QString> &m_texts;
    const RowVisitor &m_visitor;
    SheetRow m_row;
    int m_rows = 0;
};

void Sheet::read(ZipEntry *entry)
{
    QXmlStreamReader xml(entry);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("row")) {
            readRow(&xml);
        }
    }
    refuseDamage(xml, *entry);
}

void Sheet::readRow(QXmlStreamReader *xml)
{
    if (++m_rows > mostRows) {
        refuseSize();
    }
    const int number = xml->attributes().value(QLatin1String("r")).toInt();
    m_row = {number > 0 ? number : m_row.line + 1, QString(), {}, true, m_name};
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("c")) {
            readCell(xml);
        } else {
            xml->skipCurrentElement();
        }
    }
    const bool isEmpty = m_row.cells.join(QString()).trimmed().isEmpty();
    if (!isEmpty && !xml->hasError()) {
        m_visitor(m_row);
    }
}

void Sheet::readCell(QXmlStreamReader *xml)
{
    const QXmlStreamAttributes attributes = xml->attributes();
    const int column = columnOf(attributes.value(QLatin1String("r")));
    if (column > mostCells || m_row.cells.size() >= mostCells) {
        refuseSize();
    }
    while (m_row.cells.size() + 1 < column) {
        m_row.cells.append(QString());
    }
    m_row.cells.append(valueOf(xml, attributes.value(QLatin1String("t")).toString()));
}

QString Sheet::valueOf(QXmlStreamReader *xml, const QString &type) const
{
    QString value;
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("v") || xml->name() == QLatin1String("is")) {
            value = textOf(xml);
        } else {
            xml->skipCurrentElement();
        }
    }
    if (type != QLatin1String("s")) {
        return value;
    }
    bool isNumber = false;
    const int index = value.toInt(&isNumber);
    if (!isNumber || index < 0 || index >= m_texts.size()) {
        throw Error(translated("the workbook is damaged: %1").arg(value));
    }
    return m_texts[index];
}

} // namespace

void visit(const QString &path, const RowVisitor &visitor, const ReadProgress &progress)
{
    const ZipArchive archive(path);
    if (!archive.has(QStringLiteral("xl/workbook.xml"))) {
        throw Error(translated("this is a zip archive, not a workbook; unpack it and import what is inside"));
    }
    const QVector<QString> texts = sharedTexts(archive);
    const QVector<SheetFile> files = sheetFiles(archive);
    for (int i = 0; i < files.size(); ++i) {
        if (progress) {
            progress(i, files.size());
        }
        ZipEntry entry(archive, files[i].file);
        Sheet(files.size() > 1 ? files[i].name : QString(), texts, visitor).read(&entry);
    }
}

} // namespace TradeModule::Workbook
