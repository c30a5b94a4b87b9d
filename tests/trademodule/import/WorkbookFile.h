#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <zip.h>

#include <utility>
#include <vector>

namespace TradeModule {

using WorkbookParts = std::vector<std::pair<const char *, QByteArray>>;

/// Writes the parts of a workbook, by their names, into a file.
inline void writeWorkbook(const QString &path, const WorkbookParts &parts)
{
    QFile::remove(path);
    zip *const archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE, nullptr);
    ASSERT_NE(archive, nullptr);
    for (const auto &[name, bytes] : parts) {
        zip_source *const source =
            zip_source_buffer(archive, bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0);
        ASSERT_GE(zip_file_add(archive, name, source, ZIP_FL_ENC_UTF_8), 0);
    }
    ASSERT_EQ(zip_close(archive), 0);
}

} // namespace TradeModule
