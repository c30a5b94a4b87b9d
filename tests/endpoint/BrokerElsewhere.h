#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QHostAddress>
#include <QString>
#include <QTcpServer>

// What tests of a bus beyond this machine share; here it is on the loopback interface.

inline void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(path);
    file.write(text);
}

inline int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}
