#pragma once

#include "tests/fuzz/Properties.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

/// Holds a property against each file of corpus/`folder`.
inline void replay(const char *folder, void (*check)(const QByteArray &))
{
    const QDir files(QStringLiteral(TRADECHART_CORPUS "/") + QLatin1String(folder));
    const QFileInfoList inputs = files.entryInfoList(QDir::Files, QDir::Name);
    EXPECT_FALSE(inputs.isEmpty()) << "there is nothing in " << folder;
    for (const QFileInfo &input : inputs) {
        SCOPED_TRACE(input.filePath().toStdString());
        QFile file(input.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_NO_THROW(check(file.readAll()));
    }
}
