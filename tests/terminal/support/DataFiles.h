#pragma once

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace Terminal {

/// Files of a data folder that a test writes.
class DataFiles : public ::testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &content)
    {
        QDir(m_dir.path()).mkpath(QFileInfo(name).path());
        QFile file(m_dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QString folder() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

/// A line that a reader must refuse, and what it must say.
struct BadLine
{
    const char *name;
    const char *line;
    const char *reason;
};

} // namespace Terminal
