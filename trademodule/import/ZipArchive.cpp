#include "trademodule/import/ZipArchive.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <QFile>

#include <zip.h>

namespace TradeModule {

ZipArchive::ZipArchive(const QString &path)
{
    int code = 0;
    m_archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
    if (m_archive == nullptr) {
        throw Error(translated("the workbook cannot be unpacked; open it and save it anew"));
    }
}

ZipArchive::~ZipArchive()
{
    zip_discard(m_archive);
}

bool ZipArchive::has(const QString &name) const
{
    return zip_name_locate(m_archive, name.toUtf8().constData(), 0) >= 0;
}

ZipEntry::ZipEntry(const ZipArchive &archive, const QString &name, qint64 most)
    : m_file(zip_fopen(archive.m_archive, name.toUtf8().constData(), 0)),
      m_left(most)
{
    if (m_file == nullptr) {
        throw Error(translated("the workbook cannot be unpacked; open it and save it anew"));
    }
    open(QIODevice::ReadOnly);
}

ZipEntry::~ZipEntry()
{
    zip_fclose(m_file);
}

qint64 ZipEntry::readData(char *data, qint64 size)
{
    const zip_int64_t read = isTooLarge() ? -1 : zip_fread(m_file, data, static_cast<zip_uint64_t>(size));
    if (read > 0) {
        m_left -= read;
    }
    return isTooLarge() ? -1 : read;
}

qint64 ZipEntry::writeData(const char *, qint64)
{
    return -1;
}

} // namespace TradeModule
