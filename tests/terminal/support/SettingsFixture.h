#pragma once

#include "terminal/ui/WindowSettings.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QMainWindow>
#include <QTemporaryDir>

namespace Terminal {

/// Settings in a folder of the test's own.
class Settings : public ::testing::Test
{
protected:
    Settings()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        QCoreApplication::setOrganizationName(QStringLiteral("tradechart-test"));
        QCoreApplication::setApplicationName(QStringLiteral("tradeterminal"));
    }

    static QString file() { return QSettings().fileName(); }
    static void set(const QString &key, const QString &value) { QSettings().setValue(key, value); }
    static void remember(const TerminalOptions &options)
    {
        const QMainWindow window;
        WindowSettings().remember(options, window);
    }

    QTemporaryDir m_folder;
};

} // namespace Terminal
